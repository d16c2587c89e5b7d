// Numbers that know the type they were made from. Booleans are a type of their own.
//
//     NSNumber::numberWithInt(320)->stringValue();    // "320"
//
// Immutable, so any thread may use one.
#pragma once

#include "Platform/Foundation/Numbers/NSValue.h"
#include "Platform/Runtime/Object/NumberType.h"

#include <cstdint>

#pragma GCC visibility push(default)

class NSString;
struct NSDecimal;

class NSNumber : public NSValue {
    NS_CLASS(NSNumber, NSValue)
public:
    /// For the factories below, and for makers of many numbers (ObjectPool.h). The encoding must be one of
    /// the value's kind: "csiq", "BCSIQ" or "fd".
    NSNumber(char encoding, std::int64_t value) : encoding_(encoding), signed_(value) {}
    NSNumber(char encoding, std::uint64_t value) : encoding_(encoding), unsigned_(value) {}
    NSNumber(char encoding, double value) : encoding_(encoding), floating_(value) {}

    static Ref<NSNumber> numberWithBool(bool value);
    static Ref<NSNumber> numberWithChar(std::int8_t value) { return numberWith(value); }
    static Ref<NSNumber> numberWithUnsignedChar(std::uint8_t value) { return numberWith(value); }
    static Ref<NSNumber> numberWithShort(std::int16_t value) { return numberWith(value); }
    static Ref<NSNumber> numberWithUnsignedShort(std::uint16_t value) { return numberWith(value); }
    static Ref<NSNumber> numberWithInt(std::int32_t value) { return numberWith(value); }
    static Ref<NSNumber> numberWithUnsignedInt(std::uint32_t value) { return numberWith(value); }
    static Ref<NSNumber> numberWithLongLong(std::int64_t value) { return numberWith(value); }
    static Ref<NSNumber> numberWithUnsignedLongLong(std::uint64_t value) { return numberWith(value); }
    static Ref<NSNumber> numberWithInteger(NSInteger value) { return numberWith(value); }
    static Ref<NSNumber> numberWithUnsignedInteger(NSUInteger value) { return numberWith(value); }
    static Ref<NSNumber> numberWithFloat(float value) { return numberWith(value); }
    static Ref<NSNumber> numberWithDouble(double value) { return numberWith(value); }
    /// The one of the above for the type. A `long double` is kept as a `double`.
    template <class T>
    static Ref<NSNumber> numberWith(T value);

    /// The encoding of the type it was made from: one of "BcCsSiIqQfd".
    char objCType() const { return isDecimal() ? 'd' : encoding_; }
    using NSValue::getValue;
    /// Writes the value in the type it was made from. Raises NSInvalidArgumentException unless `size` is the
    /// size of that type.
    void getValue(void *value, NSUInteger size) const override;
    bool isBoolean() const { return encoding_ == 'B'; }
    bool isFloating() const { return encoding_ == 'f' || encoding_ == 'd' || isDecimal(); }
    /// Whether it is an NSDecimalNumber; these count as floating, too.
    bool isDecimal() const { return encoding_ == decimalEncoding; }

    /// False for zero, true for any other value.
    bool boolValue() const;
    std::int8_t charValue() const { return valueAs<std::int8_t>(); }
    std::uint8_t unsignedCharValue() const { return valueAs<std::uint8_t>(); }
    std::int16_t shortValue() const { return valueAs<std::int16_t>(); }
    std::uint16_t unsignedShortValue() const { return valueAs<std::uint16_t>(); }
    std::int32_t intValue() const { return valueAs<std::int32_t>(); }
    std::uint32_t unsignedIntValue() const { return valueAs<std::uint32_t>(); }
    std::int64_t longLongValue() const;
    std::uint64_t unsignedLongLongValue() const;
    NSInteger integerValue() const { return longLongValue(); }
    NSUInteger unsignedIntegerValue() const { return unsignedLongLongValue(); }
    float floatValue() const { return static_cast<float>(doubleValue()); }
    double doubleValue() const;
    /// The one of the above for the type.
    template <class T>
    T valueAs() const;
    /// The number that `stringValue` shows; not a number for an infinite value.
    NSDecimal decimalValue() const;
    /// Decimal text that reads back equal; "1" and "0" for booleans.
    Ref<NSString> stringValue() const;

    /// Compares the exact values, whatever types they were made from; not-a-number equals itself.
    bool isEqual(const id &other) const override;
    NSUInteger hash() const override;
    Ref<NSString> description() const override { return stringValue(); }

protected:
    std::string encodedType() const override { return std::string(1, objCType()); }

    /// `encoding_` of an NSDecimalNumber, whose nearest double is in `floating_`.
    static constexpr char decimalEncoding = 'D';

private:
    bool isUnsigned() const;
    bool equalsFloating(double value) const;
    const NSDecimal &decimal() const;

    const char encoding_;
    union {
        const std::int64_t signed_;
        const std::uint64_t unsigned_;
        const double floating_;
    };
};

template <class T>
Ref<NSNumber> NSNumber::numberWith(T value) {
    if constexpr (std::same_as<T, bool>)
        return numberWithBool(value);
    else if constexpr (std::same_as<T, long double>)
        return numberWith(static_cast<double>(value));
    else if constexpr (std::floating_point<T>)
        return make<NSNumber>(runtime::numberEncoding<T>(), double{value});
    else if constexpr (std::signed_integral<T>)
        return make<NSNumber>(runtime::numberEncoding<T>(), std::int64_t{value});
    else
        return make<NSNumber>(runtime::numberEncoding<T>(), std::uint64_t{value});
}

template <class T>
T NSNumber::valueAs() const {
    if constexpr (std::same_as<T, bool>)
        return boolValue();
    else if constexpr (std::floating_point<T>)
        return static_cast<T>(doubleValue());
    else if constexpr (std::same_as<T, std::uint64_t>)
        return unsignedLongLongValue();
    else
        return static_cast<T>(longLongValue());
}

#pragma GCC visibility pop
