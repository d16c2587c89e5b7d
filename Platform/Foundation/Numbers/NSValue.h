// Objects that hold a structure, a pointer or the like: its bytes and the encoding of its type.
//
//     const auto value = NSValue::valueWith(CGSize{3, 4});
//     value->objCType();          // "{CGSize=dd}"
//     value->getValue<CGSize>();
//
// Immutable, so any thread may use one. Numbers are a subclass, NSNumber.
#pragma once

#include "Platform/Runtime/Object/TypeEncoding.h"

#pragma GCC visibility push(default)

class NSValue : public NSObject {
    NS_CLASS(NSValue, NSObject)
public:
    /// Copies as many bytes as the encoded type has. Raises NSInvalidArgumentException for null, and unless
    /// the encoding is that of one type, which has a known size and contains no objects.
    static Ref<NSValue> valueWithBytes(const void *bytes, std::string_view objCType);
    /// Encoded "^v". The caller keeps owning the memory that it points to.
    static Ref<NSValue> valueWithPointer(const void *pointer);
    /// For any type with an encoding (TypeEncoding.h) but objects.
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
    /// Null for a value of another type.
    void *pointerValue() const;

    /// "{length = 4, bytes = 0x01020304}"; for a pointer, unless null, its address.
    Ref<NSString> description() const override;
    id copy() const override { return self(); }

protected:
    virtual std::string encodedType() const = 0;
    void checkSize(NSUInteger size) const;
};

#pragma GCC visibility pop
