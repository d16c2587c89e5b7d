// Writes the state of an object under keys, or reads it back. A class takes part by implementing two
// operations, one to write its state and one to read it:
//
//     NS_IMPLEMENTATION(Book) {
//         cls.implement<coding::encodeWithCoder, &Book::encodeWithCoder>()
//             .implement<coding::initWithCoder, &Book::initWithCoder>();
//     }
//     void Book::encodeWithCoder(const Ref<NSCoder> &coder) { coder->encodeObject(title, u"title"_ns); }
//     id Book::initWithCoder(const Ref<NSCoder> &coder) {
//         title = as<NSString>(coder->decodeObjectForKey(u"title"_ns));
//         return self();    // or none when the state is not acceptable
//     }
//
// A coder must be used only during the call that it is passed to, on its thread. Errors while reading do not
// raise: from then on the coder returns none and zero, and the whole archive is refused in the end.
//
// None as a key, and an operation that this kind of coder does not have, raise NSInvalidArgumentException.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"
#include "Platform/Runtime/Object/Operation.h"

#pragma GCC visibility push(default)

class NSData;
class NSError;
class NSNumber;

/// Error codes of NSCocoaErrorDomain: the archive cannot be read, and the object cannot be written.
inline constexpr NSInteger NSCoderReadCorruptError = 4864;
inline constexpr NSInteger NSCoderInvalidValueError = 4866;

class NSCoder : public NSObject {
    NS_CLASS(NSCoder, NSObject)
public:
    // Primitives.
    /// An object that is encoded several times is written once and shared. None can be written, too.
    virtual void encodeObject(const id &object, const Ref<NSString> &key);
    /// None for a missing key, too.
    virtual id decodeObjectForKey(const Ref<NSString> &key);
    /// Writes a text, a number or data as the value of the key itself, not as a shared object.
    virtual void encodePropertyList(const id &leaf, const Ref<NSString> &key);
    virtual id decodePropertyListForKey(const Ref<NSString> &key);
    virtual bool containsValueForKey(const Ref<NSString> &key);
    /// Refuses what is being read or written. Of several errors the first is reported.
    virtual void failWithError(const Ref<NSError> &error);

    void encodeBool(bool value, const Ref<NSString> &key);
    void encodeInt(std::int32_t value, const Ref<NSString> &key) { encodeInt32(value, key); }
    void encodeInt32(std::int32_t value, const Ref<NSString> &key);
    void encodeInt64(std::int64_t value, const Ref<NSString> &key);
    void encodeInteger(NSInteger value, const Ref<NSString> &key) { encodeInt64(value, key); }
    void encodeFloat(float value, const Ref<NSString> &key);
    void encodeDouble(double value, const Ref<NSString> &key);
    /// `bytes` may be null when `length` is 0.
    void encodeBytes(const void *bytes, NSUInteger length, const Ref<NSString> &key);

    // Zero, false or none for a missing key. For a value of another kind, and for an integer that does not
    // fit, the archive is refused.
    bool decodeBoolForKey(const Ref<NSString> &key);
    std::int32_t decodeIntForKey(const Ref<NSString> &key) { return decodeInt32ForKey(key); }
    std::int32_t decodeInt32ForKey(const Ref<NSString> &key);
    std::int64_t decodeInt64ForKey(const Ref<NSString> &key);
    NSInteger decodeIntegerForKey(const Ref<NSString> &key) { return decodeInt64ForKey(key); }
    float decodeFloatForKey(const Ref<NSString> &key);
    double decodeDoubleForKey(const Ref<NSString> &key);
    Ref<NSData> decodeBytesForKey(const Ref<NSString> &key);

private:
    /// A zero when there is no number.
    Ref<NSNumber> decodeNumber(const Ref<NSString> &key);
};

/// The two operations by which a class takes part.
namespace coding {

inline constexpr runtime::InstanceOperation<void(Ref<NSCoder>)> encodeWithCoder{"encodeWithCoder:"};
inline constexpr runtime::InstanceOperation<id(Ref<NSCoder>)> initWithCoder{"initWithCoder:"};

} // namespace coding

#pragma GCC visibility pop
