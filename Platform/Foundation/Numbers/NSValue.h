// Bytes with the encoding of their type: how structures, pointers and the like travel as objects.
//
//     const auto value = NSValue::valueWith(CGSize{3, 4});
//     value->objCType();          // "{CGSize=dd}"
//     value->getValue<CGSize>();
//
// Immutable; any thread. Numbers are values of their own kind.
#pragma once

#include "Platform/Runtime/Object/TypeEncoding.h"

class NSValue : public NSObject {
    NS_CLASS(NSValue, NSObject)
public:
    /// Copies as many bytes as the encoded type has. Raises NSInvalidArgumentException for an encoding of no
    /// type, of several, of objects, or of a type whose size it does not tell.
    static Ref<NSValue> valueWithBytes(const void *bytes, std::string_view objCType);
    /// Encoded "^v". The memory stays the caller's.
    static Ref<NSValue> valueWithPointer(const void *pointer);
    /// Of anything that has an encoding and is no object.
    template <class T>
    static Ref<NSValue> valueWith(const T &value) {
        static_assert(!runtime::isObject<T>);
        return valueWithBytes(&value, runtime::typeEncoding<T>());
    }

    /// The encoding of the type.
    std::string objCType() const { return encodedType(); }
    /// Copies the bytes out. Raises NSInvalidArgumentException unless `size` is the size of the type.
    virtual void getValue(void *value, NSUInteger size) const = 0;
    template <class T>
    T getValue() const {
        T value;
        getValue(&value, sizeof value);
        return value;
    }
    /// Null for a value that is no pointer.
    void *pointerValue() const;

    /// "{length = 4, bytes = 0x01020304}"; of a pointer its address.
    Ref<NSString> description() const override;
    id copy() const override { return self(); }

protected:
    virtual std::string encodedType() const = 0;
    void checkSize(NSUInteger size) const;
};
