#include "Frameworks/QNCategoriesPro/Foundation/NSArray/NSArray+QNCommon.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSMutableArray/NSMutableArray+QNCommon.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSMutableDictionary/NSMutableDictionary+QNCommon.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/Testing.h"

namespace {

Ref<NSMutableArray> upTo(int count) {
    const auto array = NSMutableArray::array();
    for (int i = 1; i <= count; ++i)
        array->addObject(number(i));
    return array;
}

} // namespace

TEST(ArrayExtensions, workOnBothEnds) {
    const auto array = upTo(4);
    EXPECT_EQ(text(qn::popFirstObject(array)) + text(qn::popLastObject(array)), "14");
    qn::removeFirstObject(array);
    qn::prependObject(array, u"p"_ns);
    qn::appendObject(array, u"a"_ns);
    EXPECT_EQ(joined(array), "p 3 a");
    qn::prependObjects(array, upTo(2));
    qn::appendObjects(array, upTo(1));
    qn::insertObjects(array, arrayOf({u"x"_ns, u"y"_ns}), 5);
    EXPECT_EQ(joined(array), "1 2 p 3 a x y 1");
    qn::prependObjects(array, nullptr);
    qn::insertObjects(array, nullptr, 99);
    qn::insertObjects(array, NSArray::array(), 99);
    qn::appendObjects(array, array);
    EXPECT_EQ(array->count(), 16u);
    EXPECT_EQ(text(qn::objectOrNilAtIndex(array, 15)) + text(qn::objectOrNilAtIndex(array, 16)), "1(none)");
    EXPECT_EQ(raised([&] { qn::insertObjects(array, upTo(1), 17); }), NSRangeException);

    const auto empty = NSMutableArray::array();
    qn::removeFirstObject(empty);
    empty->removeLastObject();
    EXPECT_FALSE(qn::popFirstObject(empty) || qn::popLastObject(empty) || qn::randomObject(empty));
    EXPECT_FALSE(qn::randomObject(nullptr) || qn::objectOrNilAtIndex(nullptr, 0) ||
                 qn::popLastObject(nullptr));
    qn::reverse(nullptr);
    qn::appendObject(nullptr, array);
}

TEST(ArrayExtensions, moveManyElementsAtATime) {
    const auto array = upTo(1);
    for (int i = 0; i < 20; ++i)
        qn::prependObjects(array, array);
    EXPECT_EQ(array->count(), NSUInteger{1} << 20) << "minutes, if each moved all that follow";
    array->addObject(u"last"_ns);
    array->removeObjectsInRange({0, NSUInteger{1} << 19});
    array->removeObject(number(1));
    EXPECT_EQ(joined(array), "last");
}

TEST(ArrayExtensions, changeTheOrderAlone) {
    for (const int count : {0, 1, 2, 3, 6}) {
        const auto array = upTo(count);
        auto objects = array->allObjects();
        qn::reverse(array);
        std::reverse(objects.begin(), objects.end());
        EXPECT_EQ(array->allObjects(), objects);
        std::set<id> drawn;
        for (int i = 0; i < 500; ++i) {
            qn::shuffle(array);
            const auto shuffled = array->allObjects();
            ASSERT_TRUE(
                std::is_permutation(shuffled.begin(), shuffled.end(), objects.begin(), objects.end()));
            if (const id object = qn::randomObject(array))
                drawn.insert(object);
        }
        EXPECT_EQ(drawn, std::set<id>(objects.begin(), objects.end()))
            << "a miss in 500 draws of 6 is out of the question";
    }
}

TEST(DictionaryExtensions, takeEntriesOut) {
    const auto dictionary = NSMutableDictionary::dictionaryWithDictionary(
        dictionaryOf({{u"a"_ns, u"1"_ns}, {u"b"_ns, u"2"_ns}, {u"c"_ns, u"3"_ns}}));
    EXPECT_EQ(text(qn::popObjectForKey(dictionary, u"c"_ns)), "3");
    EXPECT_FALSE(qn::popObjectForKey(dictionary, u"c"_ns) || qn::popObjectForKey(dictionary, nullptr) ||
                 qn::popObjectForKey(nullptr, u"a"_ns));
    const auto popped = qn::popEntriesForKeys(dictionary, arrayOf({u"a"_ns, u"z"_ns, u"a"_ns}));
    EXPECT_TRUE(popped->isEqual(dictionaryOf({{u"a"_ns, u"1"_ns}})));
    EXPECT_TRUE(dictionary->isEqual(dictionaryOf({{u"b"_ns, u"2"_ns}})));
    EXPECT_EQ(qn::popEntriesForKeys(dictionary, nullptr)->count(), 0u);
    EXPECT_EQ(qn::popEntriesForKeys(nullptr, nullptr), nullptr);
}
