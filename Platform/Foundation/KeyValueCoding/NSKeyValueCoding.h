// Key-value coding: reading and writing the properties of an object by name.
//
//     book->setValue(NSNumber::numberWithInt(320), u"pages"_ns);
//     const id title = book->valueForKey(u"title"_ns);
//
// For the key `title`, reading tries the methods `getTitle`, `title`, `isTitle` and `_title`, then the
// instance variables `_title`, `_isTitle`, `title` and `isTitle`. Writing tries the methods `setTitle:` and
// `_setTitle:`, then the same instance variables. A dictionary uses the keys of its entries instead.
//
// Values that are no objects are boxed (BoxedValue.h); a member that takes another class of object gets none.
//
// Errors: NSUnknownKeyException when the object has nothing of that name; NSInvalidArgumentException when a
// value that is not an object is set to none or to an object that cannot be converted.
//
// Keys from outside are safe: they are looked up among existing selectors, and no new ones are registered.
//
// Threads: those of the accessors that are called.
#pragma once

#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Method.h"

#pragma GCC visibility push(default)

namespace runtime {

/// The method that `-[NSObject valueForKey:]` calls for the key; null when it reads an instance variable or
/// finds nothing.
Method keyValueReader(Class cls, const std::string &key);

} // namespace runtime

/// Reads along a path of keys separated by dots, e.g. "author.name". None when the path, the object or a
/// value on the way is none. Raises NSUnknownKeyException like `valueForKey`.
id valueForKeyPath(const id &object, const Ref<NSString> &keyPath);

#pragma GCC visibility pop
