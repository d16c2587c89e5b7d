// Key-value coding: reading and writing what an object has by name.
//
//     book->setValue(NSNumber::numberWithInt(320), u"pages"_ns);
//     const id title = book->valueForKey(u"title"_ns);
//
// For the key `title`, reading tries the methods `getTitle`, `title`, `isTitle` and `_title`, then the
// instance variables `_title`, `_isTitle`, `title` and `isTitle`. Writing tries the methods `setTitle:` and
// `_setTitle:`, then the same instance variables. A dictionary has values by its own keys instead.
//
// Values that are no objects are boxed (BoxedValue.h); a member that takes another class of object gets none.
//
// Raised are NSUnknownKeyException when an object has nothing of that name, and NSInvalidArgumentException
// when none or an object of a kind that does not fit is written to something that is no object.
//
// Names are looked up among those that classes have; keys from outside leave nothing behind.
//
// Threads: as the accessors that are called.
#pragma once

#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Method.h"

namespace runtime {

/// The method that NSObject's `valueForKey` calls for the key; null when it reads an instance variable or
/// finds nothing.
Method keyValueReader(Class cls, const std::string &key);

} // namespace runtime

/// Reads along keys with dots between them, e.g. "author.name"; none as soon as a value is none.
id valueForKeyPath(const id &object, const Ref<NSString> &keyPath);
