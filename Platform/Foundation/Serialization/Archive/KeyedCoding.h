// How the platform's own classes are written to keyed archives and read from them: one table.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <string_view>

#pragma GCC visibility push(default)

class NSKeyedArchiver;
class NSKeyedUnarchiver;

struct KeyedCoding {
    Class cls;
    /// Whether the object itself is written, not a dictionary of its values. Applies to subclasses without an
    /// entry of their own, too.
    bool isInline;
    void (*encode)(const id &object, NSKeyedArchiver &archiver);
    /// None when the values do not make up an object of the class.
    id (*decode)(NSKeyedUnarchiver &unarchiver);

    /// The entry of the class, or of its nearest superclass with one; null without any.
    static const KeyedCoding *ofClass(Class cls);
    /// The entry for the object; null if its class has an `encodeWithCoder:` of its own. The first call adds
    /// that operation to the classes of the table.
    static const KeyedCoding *ofObject(const id &object);

    /// Any class of the program; null for none, for an unknown name and for a class that cannot be used.
    static Class classNamed(const Ref<NSString> &name);
    /// The key as written in archives: with another "$" if it begins with one, as the archive's own keys do.
    /// Raises NSInvalidArgumentException for none.
    static Ref<NSString> storedKey(const Ref<NSString> &key);
};

#pragma GCC visibility pop
