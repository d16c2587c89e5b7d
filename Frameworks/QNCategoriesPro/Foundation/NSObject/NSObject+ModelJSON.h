// Writes models, and collections of them, as JSON: the reverse of NSObject+Model.h.
//
//     qn::modelToJSONString(book);   // {"title":"Emma","pages":474}
//
// | object                     | JSON                                                                      |
// |----------------------------|---------------------------------------------------------------------------|
// | text, number, null marker  | itself                                                                    |
// | dictionary                 | itself when it is valid JSON; else a new one, in which keys that are not  |
// |                            | texts are their descriptions, and values without JSON are null            |
// | array, set                 | an array, itself when it is valid JSON; else a new one without nulls and  |
// |                            | elements that have no JSON                                                |
// | URL, attributed string     | its text                                                                  |
// | date                       | "2014-01-20T12:24:48+0100", in the time zone of the system                |
// | data                       | has no JSON                                                               |
// | any other                  | a dictionary of its mapped properties; without these it has no JSON       |
//
// A property is written under its key, its path of keys or the first of its several keys, unless that place
// is taken. Of several properties with one key, only the one found first is written. Numbers that are not
// finite, null, and types without JSON (blocks, pointers, structures, C arrays) are left out; classes and
// selectors are written by name. Finally `modelCustomTransformToDictionary:` may change the dictionary, or
// refuse the object.
//
// `modelToJSONData` and `modelToJSONString` write models straight as text where they can, with the same
// result; see ModelWriter.h.
//
// An object within itself has no JSON, nor has anything more than 512 levels deep. An object that can be
// reached in several ways is written each time.
//
// Threads: any, while no thread changes the objects. Only getters and hooks may raise.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Writing/JSONObjectWriter.h"

#pragma GCC visibility push(default)

class NSData;

namespace qn {

/// An array or a dictionary; none for an object that becomes neither.
id modelToJSONObject(const id &model);
/// The same as compact JSON text, in UTF-8; none when there is no such object, or when a hook put something
/// into it that JSON cannot hold. A single value does not spoil the rest: number objects that are not finite
/// become null, or are left out of arrays, and an unpaired surrogate becomes U+FFFD.
Ref<NSData> modelToJSONData(const id &model);
Ref<NSString> modelToJSONString(const id &model);

} // namespace qn

#pragma GCC visibility pop
