// Writes the state of an object under keys, or reads it back. An object takes part by two operations that it
// registers with the runtime; it writes its state in one and takes it back in the other:
//
//     NS_IMPLEMENTATION(Book) {
//         cls.implement<coding::encodeWithCoder, &Book::encodeWithCoder>()
//             .implement<coding::initWithCoder, &Book::initWithCoder>();
//     }
//     void Book::encodeWithCoder(const Ref<NSCoder> &coder) { coder->encodeObject(title, u"title"_ns); }
//     id Book::initWithCoder(const Ref<NSCoder> &coder) {
//         title = as<NSString>(coder->decodeObjectForKey(u"title"_ns));
//         return self();    // none: the state makes no such object
//     }
//
// A coder is of use only during the call that hands it over, on its thread. What goes wrong while reading is
// kept by the coder: from then on it gives none and zero, and the whole archive is refused in the end.
//
// None as a key, and an operation that the kind of coder lacks, raise NSInvalidArgumentException.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"
#include "Platform/Runtime/Object/Operation.h"

class NSData;
class NSError;
class NSNumber;

/// Codes of NSCocoaErrorDomain: the archive cannot be read; the object cannot be written.
inline constexpr NSInteger NSCoderReadCorruptError = 4864;
inline constexpr NSInteger NSCoderInvalidValueError = 4866;

class NSCoder : public NSObject {
    NS_CLASS(NSCoder, NSObject)
public:
    // Primitives.
    /// An object met before is written once and shared; none is written, too.
    virtual void encodeObject(const id &object, const Ref<NSString> &key);
    virtual id decodeObjectForKey(const Ref<NSString> &key);
    /// A text, a number or data, in the place of its key instead of as an object.
    virtual void encodePropertyList(const id &leaf, const Ref<NSString> &key);
    virtual id decodePropertyListForKey(const Ref<NSString> &key);
    virtual bool containsValueForKey(const Ref<NSString> &key);
    /// Refuses what is being read or written. The first error stays.
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

    // Zero, false or none for a missing key. A value of another kind, and a whole number that does not fit,
    // fail.
    bool decodeBoolForKey(const Ref<NSString> &key);
    std::int32_t decodeIntForKey(const Ref<NSString> &key) { return decodeInt32ForKey(key); }
    std::int32_t decodeInt32ForKey(const Ref<NSString> &key);
    std::int64_t decodeInt64ForKey(const Ref<NSString> &key);
    NSInteger decodeIntegerForKey(const Ref<NSString> &key) { return decodeInt64ForKey(key); }
    float decodeFloatForKey(const Ref<NSString> &key);
    double decodeDoubleForKey(const Ref<NSString> &key);
    Ref<NSData> decodeBytesForKey(const Ref<NSString> &key);

private:
    /// Zero when there is none.
    Ref<NSNumber> decodeNumber(const Ref<NSString> &key);
};

/// The two operations by which an object takes part.
namespace coding {

inline constexpr runtime::InstanceOperation<void(Ref<NSCoder>)> encodeWithCoder{"encodeWithCoder:"};
inline constexpr runtime::InstanceOperation<id(Ref<NSCoder>)> initWithCoder{"initWithCoder:"};

} // namespace coding
