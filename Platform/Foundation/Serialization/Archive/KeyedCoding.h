// How the platform's own classes stand in keyed archives: one table.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <string_view>

class NSKeyedArchiver;
class NSKeyedUnarchiver;

struct KeyedCoding {
    Class cls;
    /// Stands in the archive as it is. Subclasses without an entry of their own do, too.
    bool isInline;
    void (*encode)(const id &object, NSKeyedArchiver &archiver);
    /// None when the values make no such object.
    id (*decode)(NSKeyedUnarchiver &unarchiver);

    /// The entry of the class or of its nearest superclass that has one; null without.
    static const KeyedCoding *ofClass(Class cls);
    /// Of the object, unless its class has an `encodeWithCoder:` of its own. The first call gives the classes
    /// of the table that operation.
    static const KeyedCoding *ofObject(const id &object);

    /// Any class of the program, used before or not; null when there is none that can be used.
    static Class classNamed(const Ref<NSString> &name);
    /// The key as it stands in archives, whose own keys begin with "$". Raises for none.
    static Ref<NSString> storedKey(const Ref<NSString> &key);
};
