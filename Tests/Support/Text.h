// What the tests of this folder share: texts to compare, and what an operation raises.
#pragma once

#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/NSException.h"

#include <string>
#include <string_view>

/// The description as UTF-8; "(none)" for none.
inline std::string text(const id &object) {
    return object ? object->description()->utf8() : "(none)";
}

inline Ref<NSString> string(std::string_view utf8) {
    return NSString::stringWithUTF8String(utf8);
}

/// The name of the exception that the operation raises; empty when it raises none.
template <class Operation>
std::string raised(Operation &&operation) {
    try {
        static_cast<void>(operation());
        return "";
    } catch (const NSException &exception) {
        return exception.name();
    }
}
