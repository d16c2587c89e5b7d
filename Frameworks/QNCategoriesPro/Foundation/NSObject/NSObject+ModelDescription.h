// Models, and what they hold, as text for people; containers and models indented by four blanks a level:
//
//     <Book: 0x5581d3f0> {
//         pages = 474;
//         title = "Emma"
//     }
//
// Properties stand in the order of their names. Values and data longer than 100 characters are cut. An object
// within itself, and what lies more than 512 levels deep, shows as its class and address alone.
//
// Threads: any, while nobody changes the objects.
#pragma once

#include "Platform/Foundation/Text/NSString.h"

/// Never none. "<nil>" for none.
Ref<NSString> ModelDescription(const id &object);
/// Inserts four blanks after every line feed, and returns the same text.
Ref<NSMutableString> ModelDescriptionAddIndent(const Ref<NSMutableString> &text);

namespace qn {

/// Returns none for none.
Ref<NSString> modelDescription(const id &model);

} // namespace qn
