// NS_PROPERTIES: declares data members as properties, naming each only once.
//
//     class Book : public NSObject {
//         NS_CLASS(Book, NSObject)
//     public:
//         Ref<NSString> title;
//         std::int32_t pages = 0;
//         Ref<NSArray> chapters;
//     };
//     NS_PROPERTIES(Book, title, (pages, key("page_count", "pages")), (chapters, Chapter))
//
// is short for
//
//     NS_IMPLEMENTATION(Book) {
//         cls.property<&Book::title>("title", "N");
//         cls.property<&Book::pages>("pages", "N").key("page_count", "pages"); // in JSON
//         cls.property<&Book::chapters, Chapter>("chapters", "N"); // of chapters
//     }
//
// With both, the class comes first: (chapters, Chapter, key("contents")).
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

// An entry is a name or, in parentheses, a name and the class of its elements, its keys or both.
// NOLINTNEXTLINE(bugprone-macro-parentheses): a pointer to a member has none
#define NS_PROPERTY_OF_NAME(Type, name) .property<&Type::name>(#name, "N")
#define NS_PROPERTY_OF_PAIR(Type, pair) NS_PROPERTY_OF_PARTS(Type, NS_WITHOUT_PARENTHESES pair)
#define NS_PROPERTY_OF_PARTS(...) NS_PROPERTY_WITH_PARTS(__VA_ARGS__)
#define NS_PROPERTY_WITH_PARTS(Type, name, part, ...)                                                        \
    NS_JOIN(NS_PROPERTY_WITH_, NS_KIND_OF_PART(part))(Type, name, part) __VA_OPT__(.__VA_ARGS__)
#define NS_PROPERTY_WITH_CLASS(Type, name, Element) .property<&Type::name, Element>(#name, "N")
#define NS_PROPERTY_WITH_KEY(Type, name, key) NS_PROPERTY_OF_NAME(Type, name).key
#define NS_KIND_OF_PART(part) NS_SECOND(NS_JOIN(NS_AFTER_, part), CLASS, )
#define NS_AFTER_key(...) , KEY
#define NS_WITHOUT_PARENTHESES(...) __VA_ARGS__
#define NS_KIND_OF(entry) NS_SECOND(NS_AFTER_A_PAIR entry, NAME, )
#define NS_AFTER_A_PAIR(...) , PAIR
#define NS_SECOND(...) NS_SECOND_OF(__VA_ARGS__)
#define NS_SECOND_OF(first, second, ...) second
#define NS_JOIN(a, b) NS_JOIN_BOTH(a, b)
#define NS_JOIN_BOTH(a, b) a##b

#pragma GCC visibility pop
