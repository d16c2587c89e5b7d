// NS_PROPERTIES: declares data members as properties, naming each only once.
//
//     class Book : public NSObject {
//         NS_CLASS(Book, NSObject)
//     public:
//         Ref<NSString> title;
//         std::int32_t pages = 0;
//         Ref<NSArray> chapters;
//     };
//     NS_PROPERTIES(Book, title, pages, (chapters, Chapter))
//
// is short for
//
//     NS_IMPLEMENTATION(Book) {
//         cls.property<&Book::title>("title", "N");
//         cls.property<&Book::pages>("pages", "N");
//         cls.property<&Book::chapters, Chapter>("chapters", "N"); // of chapters
//     }
//
// Use the long form for other attributes (a copy, accessors of other names) and to declare methods; see
// Property.h. At most 255 properties.
#pragma once

#include "Platform/Runtime/Object/Class.h"

#pragma GCC visibility push(default)

#define NS_PROPERTIES(Type, ...)                                                                             \
    NS_IMPLEMENTATION(Type) {                                                                                \
        static_cast<void>(cls __VA_OPT__(NS_SCAN(NS_NEXT_PROPERTY(Type, __VA_ARGS__))));                     \
    }

// A macro is not expanded within its own expansion, so NS_NEXT_PROPERTY defers the next entry to another scan
// of the text; each scan expands one entry.
#define NS_NEXT_PROPERTY(Type, entry, ...)                                                                   \
    NS_JOIN(NS_PROPERTY_OF_, NS_KIND_OF(entry))                                                              \
    (Type, entry) __VA_OPT__(NS_SAME_AGAIN NS_NOTHING()()(Type, __VA_ARGS__))
#define NS_SAME_AGAIN() NS_NEXT_PROPERTY
#define NS_NOTHING()
#define NS_SCAN(...) NS_SCAN_64(NS_SCAN_64(NS_SCAN_64(NS_SCAN_64(__VA_ARGS__))))
#define NS_SCAN_64(...) NS_SCAN_16(NS_SCAN_16(NS_SCAN_16(NS_SCAN_16(__VA_ARGS__))))
#define NS_SCAN_16(...) NS_SCAN_4(NS_SCAN_4(NS_SCAN_4(NS_SCAN_4(__VA_ARGS__))))
#define NS_SCAN_4(...) NS_SCAN_1(NS_SCAN_1(NS_SCAN_1(NS_SCAN_1(__VA_ARGS__))))
#define NS_SCAN_1(...) __VA_ARGS__

// An entry is a name or, in parentheses, a name and the class of its elements.
// NOLINTNEXTLINE(bugprone-macro-parentheses): a pointer to a member has none
#define NS_PROPERTY_OF_NAME(Type, name) .property<&Type::name>(#name, "N")
#define NS_PROPERTY_OF_PAIR(Type, pair) NS_PROPERTY_OF_ELEMENTS(Type, NS_WITHOUT_PARENTHESES pair)
#define NS_PROPERTY_OF_ELEMENTS(...) NS_PROPERTY_WITH_ELEMENTS(__VA_ARGS__)
#define NS_PROPERTY_WITH_ELEMENTS(Type, name, Element) .property<&Type::name, Element>(#name, "N")
#define NS_WITHOUT_PARENTHESES(...) __VA_ARGS__
#define NS_KIND_OF(entry) NS_SECOND(NS_AFTER_A_PAIR entry, NAME, )
#define NS_AFTER_A_PAIR(...) , PAIR
#define NS_SECOND(...) NS_SECOND_OF(__VA_ARGS__)
#define NS_SECOND_OF(first, second, ...) second
#define NS_JOIN(a, b) NS_JOIN_BOTH(a, b)
#define NS_JOIN_BOTH(a, b) a##b

#pragma GCC visibility pop
