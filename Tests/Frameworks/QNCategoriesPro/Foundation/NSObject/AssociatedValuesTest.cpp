#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+AssociatedValues.h"
#include "Platform/Runtime/Object/Class.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/Testing.h"

#include <thread>

using qn::Association;

namespace {

constexpr char noteKey = 0, otherKey = 0;

/// Counts the living, and runs something when one ends.
class Witness : public NSObject {
    NS_CLASS(Witness, NSObject)
public:
    Witness() { ++living; }
    ~Witness() override {
        --living;
        if (atEnd)
            atEnd();
    }

    std::function<void()> atEnd;
    static inline std::atomic<int> living = 0;
};
NS_IMPLEMENTATION(Witness) {}

class AssociatedValues : public testing::Test {
protected:
    ~AssociatedValues() override {
        EXPECT_EQ(Witness::living, 0);
        owner.reset();
        const id fresh = make<NSObject>();
        EXPECT_FALSE(runtime::AssociatedOwners::mayInclude(fresh.get())) << "nobody has any left";
    }

    id owner = make<NSObject>();
};

} // namespace

TEST_F(AssociatedValues, theManualsExample) {
    const auto lender = make<Witness>();
    {
        const id book = make<NSObject>();
        qn::setAssociatedValue(book, &noteKey, u"lent to Emma"_ns, qn::Association::copied);
        qn::setAssociatedValue(book, &otherKey, lender, qn::Association::weak);
        EXPECT_EQ(text(qn::associatedValue<NSString>(book, &noteKey)), "lent to Emma");
        qn::removeAssociatedValue(book, &noteKey);
        EXPECT_FALSE(qn::associatedValue(book, &noteKey));
    }
    EXPECT_EQ(lender.use_count(), 1);
}

TEST_F(AssociatedValues, areKeptAsTheirAssociationTells) {
    const auto changing = as<NSMutableString>(u"one"_ns->mutableCopy());
    qn::setAssociatedValue(owner, &noteKey, changing, Association::copied);
    qn::setAssociatedValue(owner, &otherKey, changing, Association::weak);
    changing->appendString(u" two"_ns);
    EXPECT_EQ(text(qn::associatedValue(owner, &noteKey)), "one");
    EXPECT_EQ(text(qn::associatedValue(owner, &otherKey)), "one two");
    EXPECT_FALSE(qn::associatedValue<NSNumber>(owner, &noteKey));

    auto seen = make<Witness>();
    qn::setAssociatedValue(owner, &otherKey, seen, Association::weak);
    seen.reset();
    EXPECT_FALSE(qn::associatedValue(owner, &otherKey));

    EXPECT_EQ(raised([&] {
                  return qn::setAssociatedValue(owner, &noteKey, make<Witness>(), Association::copied), 0;
              }),
              NSInvalidArgumentException);
    EXPECT_EQ(text(qn::associatedValue(owner, &noteKey)), "one") << "what cannot be copied replaces nothing";
    EXPECT_EQ(raised([&] { return qn::setAssociatedValue(owner, nullptr, owner), 0; }),
              NSInvalidArgumentException);
    qn::setAssociatedValue(nullptr, &noteKey, owner);
    EXPECT_FALSE(qn::associatedValue(nullptr, &noteKey));
}

TEST_F(AssociatedValues, areLookedAtOnlyWhereNobodyReplacesThem) {
    for (const auto association : {Association::strong, Association::copied, Association::weak}) {
        qn::setAssociatedValue(owner, &noteKey, u"text"_ns, association);
        EXPECT_EQ(raised([&] { return qn::peekAssociatedValue(owner, &noteKey); }),
                  NSInvalidArgumentException);
    }
    for (const auto association : {Association::strongNonatomic, Association::copiedNonatomic}) {
        qn::setAssociatedValue(owner, &noteKey, u"text"_ns, association);
        EXPECT_EQ(qn::peekAssociatedValue<NSString>(owner, &noteKey)->length(), 4u);
    }
    EXPECT_FALSE(qn::peekAssociatedValue(owner, &otherKey));
}

TEST_F(AssociatedValues, endWithTheirOwnerOrWhenRemoved) {
    qn::setAssociatedValue(owner, &noteKey, make<Witness>());
    qn::setAssociatedValue(owner, &noteKey, make<Witness>());
    qn::setAssociatedValue(owner, &otherKey, make<Witness>());
    EXPECT_EQ(Witness::living, 2) << "one was replaced";
    qn::setAssociatedValue(owner, &otherKey, nullptr);
    EXPECT_EQ(Witness::living, 1);
    qn::setAssociatedValue(owner, &otherKey, make<Witness>());
    qn::removeAssociatedValues(owner);
    EXPECT_EQ(Witness::living, 0);

    // An ending value may itself change values, of the same owner, too.
    auto last = make<Witness>();
    last->atEnd = [watched = Weak<NSObject>(owner)] {
        qn::setAssociatedValue(watched.lock(), &otherKey, make<Witness>());
    };
    qn::setAssociatedValue(owner, &noteKey, std::move(last));
    qn::removeAssociatedValues(owner);
    EXPECT_EQ(Witness::living, 1);
    owner.reset();
}

TEST_F(AssociatedValues, mayBeMadeOfOwnersWithoutEnd) {
    for (int i = 0; i < 200'000; ++i) {
        const id outer = make<Witness>();
        qn::setAssociatedValue(outer, &noteKey, std::exchange(owner, outer));
    }
    owner.reset();
}

TEST_F(AssociatedValues, belongToTheirOwnerAmongMany) {
    std::vector<id> owners;
    for (int i = 0; i < 20'000; ++i) {
        owners.push_back(make<NSObject>());
        qn::setAssociatedValue(owners.back(), &noteKey, number(i));
    }
    for (std::size_t i = 0; i < owners.size(); i += 2)
        owners[i] = make<NSObject>(); // likely where another one was
    for (std::size_t i = 0; i < owners.size(); ++i) {
        const auto value = qn::associatedValue<NSNumber>(owners[i], &noteKey);
        ASSERT_EQ(value ? value->intValue() : -1, i % 2 ? static_cast<int>(i) : -1);
    }
}

TEST_F(AssociatedValues, mayBeSharedByThreads) {
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([&, thread] {
            for (int i = 0; i < 500; ++i) {
                const id own = make<NSObject>();
                qn::setAssociatedValue(own, &noteKey, make<Witness>());
                qn::setAssociatedValue(owner, &noteKey, qn::associatedValue(own, &noteKey));
                qn::setAssociatedValue(owner, &otherKey, own, Association::weak);
                EXPECT_TRUE(qn::associatedValue<Witness>(own, &noteKey));
                const id seen = qn::associatedValue(owner, &otherKey);
                EXPECT_EQ(qn::associatedValue<Witness>(seen, &noteKey) != nullptr, seen != nullptr);
                if ((i + thread) % 50 == 0)
                    qn::removeAssociatedValues(owner);
            }
        });
    threads.clear();
    EXPECT_LE(Witness::living, 1);
    qn::removeAssociatedValue(owner, &noteKey);
}
