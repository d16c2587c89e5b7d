// A class whose properties are its data members, each named once.
//
//     class Book : public NSObject {
//         NS_CLASS(Book, NSObject)
//     public:
//         Ref<NSString> title;
//         std::int32_t pages = 0;
//     };
//     NS_PROPERTIES(Book, title, pages)
//
// stands for the same as
//
//     NS_IMPLEMENTATION(Book) {
//         cls.property<&Book::title>("title", "N");
//         cls.property<&Book::pages>("pages", "N");
//     }
//
// Whoever wants more of a property (a copy, accessors of other names, the class of elements) or has methods
// to declare writes the latter; see Property.h. At most 255 properties.
#pragma once

#include "Platform/Runtime/Object/Class.h"

#define NS_PROPERTIES(Type, ...)                                                                             \
    NS_IMPLEMENTATION(Type) {                                                                                \
        static_cast<void>(cls __VA_OPT__(NS_SCAN(NS_NEXT_PROPERTY(Type, __VA_ARGS__))));                     \
    }

// A macro is not expanded within itself: each scan of the text makes one more of what is written in pieces.
#define NS_NEXT_PROPERTY(Type, name, ...)                                                                    \
    .property<&Type::name>(#name, "N") __VA_OPT__(NS_SAME_AGAIN NS_NOTHING()()(Type, __VA_ARGS__))
#define NS_SAME_AGAIN() NS_NEXT_PROPERTY
#define NS_NOTHING()
#define NS_SCAN(...) NS_SCAN_64(NS_SCAN_64(NS_SCAN_64(NS_SCAN_64(__VA_ARGS__))))
#define NS_SCAN_64(...) NS_SCAN_16(NS_SCAN_16(NS_SCAN_16(NS_SCAN_16(__VA_ARGS__))))
#define NS_SCAN_16(...) NS_SCAN_4(NS_SCAN_4(NS_SCAN_4(NS_SCAN_4(__VA_ARGS__))))
#define NS_SCAN_4(...) NS_SCAN_1(NS_SCAN_1(NS_SCAN_1(NS_SCAN_1(__VA_ARGS__))))
#define NS_SCAN_1(...) __VA_ARGS__
