// Models, and collections of them, as JSON: what NSObject+Model.h reads, written.
//
//     qn::modelToJSONString(book);   // {"title":"Emma","pages":474}
//
// | object                     | JSON                                                                      |
// |----------------------------|---------------------------------------------------------------------------|
// | text, number, null marker  | itself                                                                    |
// | dictionary                 | itself when it is valid JSON; else anew: keys that are no texts by their   |
// |                            | descriptions, what has no JSON as null                                    |
// | array, set                 | an array, itself when it is valid JSON; else anew, without what has no    |
// |                            | JSON and without null                                                     |
// | URL, attributed string     | its text                                                                  |
// | date                       | "2014-01-20T12:24:48+0100", in the time zone of the system                |
// | data                       | none                                                                      |
// | any other                  | a dictionary of its mapped properties, none when there are none           |
//
// A property is written under its key, its path of keys or the first of its several keys, unless something is
// there already. Of the properties that share a key the one that is found first is the only one written.
// Numbers that are not finite, null, and types without JSON (blocks, pointers, structures, C arrays) are left
// out; a class and a selector are written by name. In the end `modelCustomTransformToDictionary:` may change
// the dictionary, or refuse the object.
//
// Data and text are written straight from the models, in the same words; see ModelWriter.h.
//
// An object within itself has no JSON, nor has what lies more than 512 levels deep. One that is found on many
// ways is written as many times.
//
// Threads: any, while nobody changes the objects. Getters and hooks may raise, nothing else does.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Writing/JSONObjectWriter.h"

class NSData;

namespace qn {

/// An array or a dictionary; none for an object that makes neither.
id modelToJSONObject(const id &model);
/// Its text in UTF-8 by NSJSONSerialization, without options; none without it, or when a hook made it
/// something that JSON cannot be. What no JSON text can hold does not cost the rest: number objects that are
/// not finite become null, and are left out of arrays; a surrogate that stands alone becomes U+FFFD.
Ref<NSData> modelToJSONData(const id &model);
Ref<NSString> modelToJSONString(const id &model);

} // namespace qn
