// Models and their contents as text for people, indented by four blanks per level:
//
//     <Book: 0x5581d3f0> {
//         pages = 474;
//         title = "Emma"
//     }
//
// Properties are sorted by name. The texts of NSValue and NSData are cut after 100 characters. An object
// within itself, and anything more than 512 levels deep, shows as its class and address only.
// A description ends with "..." after 8,388,608 characters, since shared objects are described each time.
//
// Threads: any, while no thread changes the objects.
#pragma once

#include "Platform/Foundation/Text/NSString.h"

#pragma GCC visibility push(default)

/// The description of any object; "<nil>" for none. Never none.
Ref<NSString> ModelDescription(const id &object);
/// Inserts four blanks after every line feed of the text itself, and returns it. Returns none when given
/// none.
Ref<NSMutableString> ModelDescriptionAddIndent(const Ref<NSMutableString> &text);

namespace qn {

/// As `ModelDescription`, but returns none when given none.
Ref<NSString> modelDescription(const id &model);

} // namespace qn

#pragma GCC visibility pop
