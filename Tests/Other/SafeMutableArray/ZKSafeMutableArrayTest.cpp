#include "Other/SafeMutableArray/ZKSafeMutableArray.h"
#include "Platform/Dispatch/Queues/ConcurrentQueue.h"
#include "Tests/Support/LogLines.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/OnThreads.h"

namespace {

constexpr NSUInteger absent = 0xFFFFFFFFFFFFFFFF;

class ZKSafeMutableArrayTest : public testing::Test {
protected:
    void fill(std::int64_t count) {
        list->removeAllObjects();
        for (std::int64_t i = 0; i < count; ++i)
            list->addObject(number(i));
    }

    const Ref<ZKSafeMutableArray> list = make<ZKSafeMutableArray>();
};

} // namespace

TEST_F(ZKSafeMutableArrayTest, readsSeeTheWritesBeforeThem) {
    for (NSUInteger i = 0; i < 40; ++i) { // beyond the capacity it begins with
        ASSERT_EQ(list->objectAtIndex(i), nullptr);
        list->addObject(number(static_cast<std::int64_t>(i)));
        ASSERT_EQ(list->count(), i + 1);
        ASSERT_EQ(list->indexOfObject(list->objectAtIndex(i)), i);
    }
    EXPECT_EQ(list->objectAtIndex(absent), nullptr);
}

TEST_F(ZKSafeMutableArrayTest, tellsTwoKindsOfAbsence) {
    EXPECT_EQ(list->indexOfObject(number(1)), absent) << "empty";
    fill(3);
    list->addObject(number(1));
    EXPECT_EQ(list->indexOfObject(nullptr), 0x7FFFFFFFFFFFFFFFu);
    EXPECT_EQ(list->indexOfObject(number(9)), absent);
    EXPECT_EQ(list->indexOfObject(number(1)), 1u) << "equal, the first of them";
    EXPECT_TRUE(list->containsObject(number(2)));
    EXPECT_FALSE(list->containsObject(number(9)) || list->containsObject(nullptr));
}

TEST_F(ZKSafeMutableArrayTest, everyWriteAndWhatItIgnores) {
    struct Row {
        const char *name;
        std::function<void(ZKSafeMutableArray &)> write;
        const char *after; ///< of "0 1 2"
        const char *afterOnEmpty;
    };
    const Row table[] = {
        {"add", [](auto &l) { l.addObject(number(7)); }, "0 1 2 7", "7"},
        {"add none", [](auto &l) { l.addObject(nullptr); }, "0 1 2", ""},
        {"insert first", [](auto &l) { l.insertObject(number(7), 0); }, "7 0 1 2", "7"},
        {"insert none", [](auto &l) { l.insertObject(nullptr, 0); }, "0 1 2", ""},
        {"insert none far", [](auto &l) { l.insertObject(nullptr, absent); }, "0 1 2", ""},
        {"remove first", [](auto &l) { l.removeObjectAtIndex(0); }, "1 2", ""},
        {"remove past the end", [](auto &l) { l.removeObjectAtIndex(3); }, "0 1 2", ""},
        {"remove last", [](auto &l) { l.removeLastObject(); }, "0 1", ""},
        {"replace", [](auto &l) { l.replaceObjectAtIndex(1, number(7)); }, "0 7 2", ""},
        {"replace by none", [](auto &l) { l.replaceObjectAtIndex(0, nullptr); }, "0 1 2", ""},
        {"replace past the end", [](auto &l) { l.replaceObjectAtIndex(3, number(7)); }, "0 1 2", ""},
        {"remove all", [](auto &l) { l.removeAllObjects(); }, "", ""},
        // Of the base class, through the writes above.
        {"remove equal", [](auto &l) { l.removeObject(number(1)); }, "0 2", ""},
        {"exchange", [](auto &l) { l.exchangeObjectAtIndex(0, 2); }, "2 1 0", ""},
    };
    for (const Row &row : table) {
        fill(3);
        row.write(*list);
        EXPECT_EQ(joined(list), row.after) << row.name;
        fill(0);
        row.write(*list);
        EXPECT_EQ(joined(list), row.afterOnEmpty) << row.name << " on empty";
    }
}

TEST_F(ZKSafeMutableArrayTest, refusesAndLogsInsertionPastTheEnd) {
    LogLines log;
    fill(2);
    list->insertObject(number(7), 2);
    list->insertObject(number(8), 4);
    list->insertObject(number(9), absent);
    EXPECT_EQ(joined(list), "0 1 7");
    EXPECT_THAT(log.take(), ElementsAre(HasSubstr("index 4"), HasSubstr("index 18446744073709551615")));
}

TEST_F(ZKSafeMutableArrayTest, derivedOperationsOfItsBaseClass) {
    fill(3);
    const auto plain = NSArray::arrayWithObjects({number(0), number(1), number(2)});
    EXPECT_TRUE(list->isEqual(plain) && plain->isEqual(list));
    EXPECT_EQ(list->indexOfObjectIdenticalTo(number(1)), NSNotFound);
    EXPECT_EQ(list->subarrayWithRange({1, 9})->count(), 2u) << "cut instead of raised";
    EXPECT_EQ(list->getObjects({5, 1}).size() + list->getObjects({absent, absent}).size(), 0u);
    std::vector<std::string> walked;
    for (const id &object : *list)
        walked.push_back(text(object));
    EXPECT_THAT(walked, ElementsAre("0", "1", "2"));
    const id copy = list->copy(), changing = list->mutableCopy();
    list->removeAllObjects();
    EXPECT_TRUE(copy->isEqual(plain) && changing->isEqual(plain)) << "independent";
}

TEST_F(ZKSafeMutableArrayTest, walksGoOverWhatItHeldAtTheStart) {
    using Visit = std::function<void()>;
    const auto each = [](const auto &elements, const Visit &visit) {
        for (const id &object : elements) {
            EXPECT_TRUE(object);
            visit();
        }
    };
    const std::function<void(const Visit &)> walks[] = {
        [&](const Visit &visit) { each(list, visit); },
        [&](const Visit &visit) { each(list->objectEnumerator(), visit); },
        [&](const Visit &visit) { each(list->reverseObjectEnumerator(), visit); },
        [&](const Visit &visit) {
            list->enumerateObjectsUsingBlock([&](const id &, NSUInteger, bool &) { visit(); });
        },
        [&](const Visit &visit) {
            list->enumerateObjectsWithOptions(NSEnumerationReverse,
                                              [&](const id &, NSUInteger, bool &) { visit(); });
        },
    };
    for (const auto &walk : walks) {
        fill(30);
        int visits = 0;
        walk([&] {
            ++visits;
            list->removeObjectAtIndex(0);
            for (int i = 0; i < 2; ++i)
                list->addObject(number(9));
        });
        EXPECT_EQ(visits, 30);
        EXPECT_EQ(list->count(), 60u);
    }
}

TEST(ZKSafeMutableArray, allShareOneQueueThatOutlivesThem) {
    EXPECT_EQ(&make<ZKSafeMutableArray>()->syncQueue(), &ZKSafeMutableArray::syncQueue());
    EXPECT_EQ(ZKSafeMutableArray::syncQueue().label(), "com.zelkor.safeArray");
    const auto element = make<NSObject>();
    for (int i = 0; i < 50; ++i) {
        const auto list = make<ZKSafeMutableArray>();
        list->addObject(element);
        list->removeLastObject();
    }
    ZKSafeMutableArray::syncQueue().barrierSync([] {});
    EXPECT_EQ(element.use_count(), 1);
}

TEST_F(ZKSafeMutableArrayTest, threadsReadAndWriteTogether) {
    constexpr std::int64_t writers = 3, writes = 200;
    std::atomic<std::int64_t> working = writers;
    dispatch::onThreads(1 + writers, [&](int thread) {
        while (thread == writers && working) {
            list->enumerateObjectsUsingBlock(
                [](const id &object, NSUInteger, bool &) { EXPECT_TRUE(object); });
            EXPECT_THAT(list->allObjects(), testing::Each(testing::NotNull()));
        }
        for (std::int64_t i = 0; thread < writers && i < writes; ++i) {
            list->insertObject(number(-1), 0);
            list->addObject(number(thread * writes + i));
            EXPECT_NE(list->indexOfObject(number(thread * writes + i)), absent) << "its own write";
            list->removeObjectAtIndex(0); // a -1, if not the same one
        }
        --working;
    });
    EXPECT_EQ(list->count(), static_cast<NSUInteger>(writers * writes));
    EXPECT_EQ(list->indexOfObject(number(-1)), absent);
}
