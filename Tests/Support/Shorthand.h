// Numbers, lists and long texts in short.
#pragma once

#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Numbers/NSNumber.h"
#include "Tests/Support/Text.h"

/// Equal numbers are different objects, so that the order among equals shows.
inline Ref<NSNumber> number(std::size_t value) {
    return NSNumber::numberWithUnsignedLongLong(value);
}

/// The descriptions of the elements with blanks between.
inline std::string elements(const Ref<NSArray> &array) {
    return text(array->componentsJoinedByString(u" "_ns));
}

inline std::string repeated(const std::string &piece, std::size_t times) {
    std::string all;
    for (std::size_t i = 0; i < times; ++i)
        all += piece;
    return all;
}
