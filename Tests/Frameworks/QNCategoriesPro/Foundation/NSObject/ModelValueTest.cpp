// Models copied, compared and archived.
#include "Platform/Foundation/Collections/ContentsHash.h"
#include "Platform/Foundation/Serialization/Archive/NSCoder.h"
#include "Platform/Foundation/Serialization/Archive/NSKeyedArchiver.h"
#include "Platform/Foundation/Serialization/Archive/NSKeyedUnarchiver.h"
#include "Platform/Foundation/Serialization/PropertyList/NSPropertyListSerialization.h"
#include "Tests/Frameworks/QNCategoriesPro/Foundation/NSObject/ModelTesting.h"
#include "Tests/Support/Random.h"
#include "Tests/Support/Testing.h"

#include <cmath>

namespace {

struct Span {
    double from = 0, to = 0;
};

} // namespace

template <>
inline constexpr const char *runtime::customEncoding<Span> = "{Span=dd}";

namespace {

class Spanned : public Node {
    NS_CLASS(Spanned, Node)
public:
    Span span;
    std::int8_t small = 0;
};
NS_PROPERTIES(Spanned, span, small)

/// Leads to two others, and counts how often any is hashed or compared.
class Fork : public Node {
    NS_CLASS(Fork, Node)
public:
    static inline int hashes = 0, comparisons = 0;
    id other;
    std::int32_t number = 0;
    NSUInteger hash() const override { return ++hashes, Node::hash(); }
    bool isEqual(const id &object) const override { return ++comparisons, Node::isEqual(object); }
};
NS_PROPERTIES(Fork, other, number)

/// Answers to keys by itself.
class Masked : public Node {
    NS_CLASS(Masked, Node)
public:
    Ref<NSString> name;
    id valueForKey(const Ref<NSString> &) const override { return u"mask"_ns; }
};
NS_PROPERTIES(Masked, name)

/// Key-value coding prefers another method to the getter.
class Veiled : public Node {
    NS_CLASS(Veiled, Node)
public:
    Ref<NSString> name;
    Ref<NSString> veil() const { return u"veil"_ns; }
};
NS_IMPLEMENTATION(Veiled) {
    cls.property<&Veiled::name>("name").method<&Veiled::veil>("getName");
}

/// Keeps what it is given, as it is.
class Notes : public NSCoder {
    NS_CLASS(Notes, NSCoder)
public:
    void encodeObject(const id &object, const Ref<NSString> &key) override { kept->setObject(object, key); }
    id decodeObjectForKey(const Ref<NSString> &key) override { return kept->objectForKey(key); }

    const Ref<NSMutableDictionary> kept = NSMutableDictionary::dictionary();
};
NS_IMPLEMENTATION(Notes) {}

Ref<Everything> filled() {
    const auto model = make<Everything>();
    model->fill();
    return model;
}

id unarchived(const Ref<NSData> &archive) {
    return NSKeyedUnarchiver::unarchivedObjectOfClasses({Node::class_(), NSString::class_(), NSData::class_(),
                                                         NSNumber::class_(), NSValue::class_(),
                                                         NSArray::class_(), NSNull::class_()},
                                                        archive);
}

template <class T = Fork>
Ref<T> forkTo(const id &next, const id &other) {
    const auto made = make<T>();
    made->next = next;
    made->other = other;
    return made;
}

/// The values undo each other in the hash.
id undone(std::size_t value) {
    return forkTo(number(value), number(value));
}

/// Equal whichever way round; of the same hash as any other of two equal values.
class Turnable final : public Fork {
public:
    bool isEqual(const id &object) const override {
        const auto *theirs = peek<Fork>(object);
        return theirs && ((next->isEqual(theirs->next) && other->isEqual(theirs->other)) ||
                          (next->isEqual(theirs->other) && other->isEqual(theirs->next)));
    }
};

/// A random graph of forks, the same for the same seed; a fork leads to earlier ones only, unless there may
/// be cycles.
class Forks {
public:
    Forks(unsigned seed, bool cyclic) {
        Random random(seed);
        all.resize(1 + random.below(12));
        std::ranges::generate(all, make<Fork>);
        for (std::size_t i = 0; i < all.size(); ++i) {
            const auto any = [&, bound = cyclic ? all.size() : i]() -> id {
                return random.oneIn(4) || bound == 0 ? nullptr : all[random.below(bound)];
            };
            all[i]->next = any();
            all[i]->other = any();
            all[i]->number = random.oneIn(2);
        }
    }
    ~Forks() {
        for (const auto &fork : all)
            fork->next = fork->other = nullptr;
    }

    std::vector<Ref<Fork>> all;
};

} // namespace

TEST(ModelCopy, sharesWhatItRefersTo) {
    const auto model = filled();
    const long texts = model->text.use_count(), blocks = model->block.use_count();
    {
        const auto copy = as<Everything>(qn::modelCopy(model));
        ASSERT_TRUE(copy && copy != model);
        EXPECT_TRUE(copy->text == model->text && copy->value == model->value && copy->next == model->next);
        EXPECT_TRUE(model->text.use_count() == texts + 1 && model->block.use_count() == blocks + 1);
        EXPECT_TRUE(copy->flag && copy->whole == -5 && copy->large == UINT64_MAX && copy->wide == 2.5L);
        EXPECT_TRUE(copy->type == Node::class_() && copy->action == model->action);
        EXPECT_TRUE(copy->pointer == model->pointer && copy->size == model->size);
        EXPECT_EQ(copy->numbers[1], 0) << "C arrays are not copied";
        EXPECT_EQ(model.use_count(), 1);
    }
    EXPECT_TRUE(model->text.use_count() == texts && model->block.use_count() == blocks);
    const id text = make<NSMutableString>(u"t"), null = NSNull::null();
    EXPECT_TRUE(qn::modelCopy(text) != text && qn::modelCopy(text)->isEqual(text));
    EXPECT_TRUE(qn::modelCopy(null) == null && !qn::modelCopy(nullptr));
}

TEST(ModelEquality, isOfTheSameClassAndValues) {
    const auto model = filled(), other = filled();
    other->block = model->block;
    other->value = model->value;
    EXPECT_TRUE(qn::modelIsEqual(model, other) && qn::modelHash(model) == qn::modelHash(other));
    other->pointer = nullptr; // such types do not count
    other->wide = 1;
    other->action = nullptr;
    EXPECT_TRUE(qn::modelIsEqual(model, other));
    other->size.width = 2;
    EXPECT_FALSE(qn::modelIsEqual(model, other));
    other->size = model->size;
    other->text = nullptr;
    EXPECT_FALSE(qn::modelIsEqual(model, other) || qn::modelIsEqual(other, model));

    EXPECT_FALSE(qn::modelIsEqual(make<Node>(), make<Fork>()) || qn::modelIsEqual(make<Node>(), nullptr));
    const auto bare = make<NSObject>();
    EXPECT_EQ(qn::modelHash(bare), reinterpret_cast<NSUInteger>(bare.get())) << "of nothing that counts";
    EXPECT_FALSE(qn::modelIsEqual(bare, make<NSObject>()));
    EXPECT_TRUE(qn::modelIsEqual(u"a"_ns, u"a"_ns) && qn::modelHash(u"a"_ns) == u"a"_ns->hash());
    EXPECT_EQ(qn::modelHash(nullptr), 0u);
}

TEST(ModelEquality, readsAsKeyValueCodingDoes) {
    const auto equalWithOtherNames = []<class T>(const Ref<T> &one, const Ref<T> &other) {
        one->name = u"a"_ns;
        other->name = u"b"_ns;
        return qn::modelIsEqual(one, other);
    };
    EXPECT_TRUE(equalWithOtherNames(make<Masked>(), make<Masked>()));
    EXPECT_TRUE(equalWithOtherNames(make<Veiled>(), make<Veiled>()));
    const auto one = make<Everything>(), other = make<Everything>();
    one->real = other->real = NAN;
    EXPECT_TRUE(qn::modelIsEqual(one, other));
}

TEST(ModelEquality, ofRandomGraphs) {
    int equal = 0;
    for (unsigned seed = 0; seed < 400; ++seed) {
        const Forks forks(seed, false);
        // By fork a number, the same for the same contents, and what its hash has to be.
        std::map<id, std::pair<std::size_t, NSUInteger>> contents = {{nullptr, {0, 0}}};
        std::map<std::tuple<std::int32_t, std::size_t, std::size_t>, std::size_t> numbers;
        for (const auto &fork : forks.all) {
            const auto [next, nextHash] = contents.at(fork->next);
            const auto [other, otherHash] = contents.at(fork->other);
            const auto known = numbers.emplace(std::tuple(fork->number, next, other), numbers.size() + 1);
            contents[fork] = {known.first->second, nextHash ^ otherHash ^ number(fork->number)->hash()};
            ASSERT_EQ(qn::modelHash(fork), contents[fork].second) << seed;
        }
        for (const auto &one : forks.all)
            for (const auto &two : forks.all) {
                const bool same = contents[one].first == contents[two].first;
                ASSERT_EQ(qn::modelIsEqual(one, two), same) << seed;
                equal += same && one != two;
            }
    }
    EXPECT_GT(equal, 300);
    for (unsigned seed = 0; seed < 400; ++seed) {
        const Forks forks(seed, true), copies(seed, true);
        for (std::size_t i = 0; i < forks.all.size(); ++i) {
            ASSERT_TRUE(qn::modelIsEqual(forks.all[i], copies.all[i])) << seed;
            // A walk that comes from elsewhere finds the same hash.
            const auto around = forkTo(forks.all[seed % forks.all.size()], forks.all[i]);
            const auto alone = qn::modelHash(around->next) ^ qn::modelHash(around->other);
            ASSERT_EQ(qn::modelHash(around), alone ^ number(0)->hash()) << seed;
        }
    }
}

TEST(ModelEquality, visitsEachModelOnce) {
    const auto tower = [](const id &end) {
        auto top = forkTo(end, end);
        for (int i = 0; i < 300; ++i) // 2 to the power of 300 ways to the end
            top = forkTo(top, top);
        return top;
    };
    const auto one = tower(u"end"_ns), same = tower(u"end"_ns), other = tower(u"END"_ns);
    EXPECT_EQ(qn::modelHash(one), qn::modelHash(same));
    EXPECT_TRUE(qn::modelIsEqual(one, same));
    EXPECT_FALSE(qn::modelIsEqual(one, other));
}

TEST(ModelEquality, ofModelsThatLeadBackToThemselves) {
    const auto ring = [](const id &end) {
        const auto first = make<Node>(), second = make<Node>();
        first->next = arrayOf({second, end});
        second->next = arrayOf({first, first});
        return first;
    };
    const auto one = ring(u"e"_ns), two = ring(u"e"_ns), three = ring(u"f"_ns);
    EXPECT_TRUE(qn::modelIsEqual(one, two));
    EXPECT_FALSE(qn::modelIsEqual(one, three));
    for (const auto &each : {one, two, three})
        each->next = nullptr;

    const auto deep = chain(100000), same = chain(100000);
    EXPECT_EQ(qn::modelHash(deep), qn::modelHash(same));
    release(deep);
    release(same);

    constexpr int links = 400;
    const auto counted = chain<Fork>(links), other = chain<Fork>(links);
    Fork::hashes = 0;
    EXPECT_TRUE(counted->isEqual(other));
    EXPECT_LE(Fork::hashes, 6 * links) << "not all the rest of the chain at each link";
    EXPECT_TRUE(other->isEqual(counted)) << "what is known is forgotten with the comparison";
    as<Node>(other->next)->next = u"other"_ns;
    EXPECT_FALSE(counted->isEqual(other));
}

TEST(ModelEquality, chosenModelsCostNoMoreThanOthers) {
    constexpr std::size_t count = 1000;
    const auto parent = make<Node>();
    const std::function<id(std::size_t)> families[] = {
        undone,
        [](std::size_t value) { return forkTo(undone(value), arrayOf({undone(value)})); },
        [&](std::size_t value) { return forkTo(undone(value), parent); },
        [](std::size_t value) { return arrayOf({undone(value)}); },
    };
    for (const auto &modelOf : families) {
        const auto set = NSMutableSet::set(), children = NSMutableSet::set();
        parent->next = nullptr;
        Fork::comparisons = 0;
        for (std::size_t i = 0; i < count; ++i)
            set->addObject(modelOf(i));
        parent->next = set->allObjects(); // from here on, some lead back to themselves
        for (std::size_t i = 0; i < count; ++i)
            children->addObject(modelOf(i));
        for (std::size_t i = 0; i < count; ++i)
            ASSERT_TRUE(children->containsObject(modelOf(i)) &&
                        !children->containsObject(modelOf(count + i)));
        EXPECT_EQ(set->count() + children->count(), 2 * count);
        EXPECT_LT(Fork::comparisons, 40 * static_cast<int>(count)); // the question and the parts included
    }
    parent->next = nullptr;

    const auto turnable = NSMutableSet::set();
    for (std::size_t i = 0; i < 40; ++i)
        turnable->addObject(forkTo<Turnable>(arrayOf({number(i)}), arrayOf({number(i), number(i)})));
    for (std::size_t i = 0; i < 40; ++i)
        EXPECT_TRUE(turnable->containsObject(
            forkTo<Turnable>(arrayOf({number(i), number(i)}), arrayOf({number(i)}))));

    const auto models = NSMutableSet::set();
    for (std::size_t i = 0; i < 5000; ++i)
        models->addObject(undone(i));
    const auto archive = NSKeyedArchiver::archivedDataWithRootObject(models);
    const auto again = NSKeyedUnarchiver::unarchivedObjectOfClasses(
        {Node::class_(), NSNumber::class_(), NSSet::class_()}, archive);
    EXPECT_TRUE(again && again->isEqual(models));
}

TEST(ModelEquality, ofEqualModelsTheContentsHaveOneHash) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        const bool cyclic = seed % 2;
        const Forks forks(seed, cyclic), copies(seed, cyclic);
        for (const auto &one : forks.all)
            for (const auto &other : copies.all)
                if (one->isEqual(other))
                    ASSERT_EQ(contentsHash(one), contentsHash(other)) << seed;
    }
}

TEST(ModelCoding, bringsBackWhatCanBeCoded) {
    const auto model = filled();
    model->next = make<Node>();
    const auto again = as<Everything>(unarchived(NSKeyedArchiver::archivedDataWithRootObject(model)));
    ASSERT_TRUE(again);
    EXPECT_TRUE(again->flag && again->whole == -5 && again->real == 0.5f && again->wide == 2.5L);
    EXPECT_TRUE(again->text->isEqual(model->text) && again->data->isEqual(model->data) &&
                as<Node>(again->next));
    EXPECT_TRUE(again->action == model->action && again->size == model->size);
    EXPECT_FALSE(again->type || again->pointer || again->block || again->value || again->numbers[1]);
    EXPECT_EQ(again->large, UINT64_MAX);

    model->real = NAN;
    model->wide = INFINITY;
    model->next = NSValue::valueWith(CGSize{1, 1});
    model->text = nullptr;
    const auto less = as<Everything>(unarchived(NSKeyedArchiver::archivedDataWithRootObject(model)));
    ASSERT_TRUE(less);
    EXPECT_FALSE(NSKeyedArchiver::archivedDataWithRootObject(model->value)) << "a pointer";
    EXPECT_TRUE(less->real == 0 && less->wide == 0 && !less->next && !less->text);
    EXPECT_EQ(qn::modelInitWithCoder(model, nullptr), model);
    EXPECT_TRUE(model->flag) << "nothing happens without a coder";
}

TEST(ModelCoding, worksWithAnyCoder) {
    const auto model = make<Spanned>();
    const auto notes = make<Notes>();
    model->next = NSNull::null();
    qn::modelEncodeWithCoder(model, notes);
    EXPECT_EQ(text(notes->kept->allKeys()), text(arrayOf({u"small"_ns, u"next"_ns})))
        << "of structures only those of geometry";
    notes->kept->setObject(NSValue::valueWith(Span{1, 2}), u"span"_ns);
    notes->kept->setObject(number(300), u"small"_ns);
    qn::modelInitWithCoder(model, notes);
    EXPECT_TRUE(model->span.to == 2 && model->small == 44);
    notes->kept->setObject(u"5"_ns, u"small"_ns);
    notes->kept->setObject(NSValue::valueWith(CGSize{3, 4}), u"span"_ns);
    notes->kept->removeObjectForKey(u"next"_ns);
    qn::modelInitWithCoder(model, notes);
    EXPECT_TRUE(model->span.to == 2 && model->small == 44 && !model->next);
}

TEST(ModelCoding, takesNothingThatDoesNotFit) {
    // An archive of dictionaries in the place of objects, and of values of other kinds under the names.
    const auto stranger = make<Everything>();
    stranger->next = u"text"_ns;
    const std::string bytes = contents(NSKeyedArchiver::archivedDataWithRootObject(stranger));
    for (const auto &[from, to] : {std::pair("next", "text"),
                                   {"next", "flag"},
                                   {"next", "size"},
                                   {"next", "data"},
                                   {"Everything", "NSObject++"},
                                   {"Everything", "Nobody    "}}) {
        std::string changed = bytes;
        for (auto at = changed.find(from); at != changed.npos; at = changed.find(from, at + 1))
            changed.replace(at, std::string_view(from).size(), to);
        const id object = unarchived(dataOf(changed));
        if (const auto model = as<Everything>(object))
            EXPECT_TRUE(!model->flag && model->size == CGSize() && !model->data) << to;
        else
            EXPECT_TRUE(!object && std::string_view(from) == "Everything") << to;
    }
    Random random(6);
    for (int i = 0; i < 2000; ++i) {
        const id object = unarchived(dataOf(random.mutated(bytes, "\xD1\x80\5")));
        EXPECT_TRUE(!object || object->description());
    }
}
