// A model of a user of the library.
#pragma once

#include <Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+Model.h>

class Book : public NSObject {
    NS_CLASS(Book, NSObject)
public:
    Ref<NSString> title;
    std::int32_t pages = 0;
    Ref<NSArray> chapters;
};
