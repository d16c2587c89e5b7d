#include "Platform/Foundation/Numbers/NSNumber.h"

#include "Platform/Foundation/Data/KeyedHash.h"
#include "Platform/Foundation/Numbers/DecimalText.h"
#include "Platform/Foundation/Numbers/NSDecimalNumber.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Class.h"

#include <cmath>
#include <cstring>
#include <limits>

NS_IMPLEMENTATION(NSNumber) {}

namespace {

constexpr double twoTo63 = 9223372036854775808.0;
constexpr double twoTo64 = 18446744073709551616.0;

std::int64_t cut(double value) {
    if (std::isnan(value))
        return 0;
    if (value >= twoTo63)
        return std::numeric_limits<std::int64_t>::max();
    return value < -twoTo63 ? std::numeric_limits<std::int64_t>::min() : static_cast<std::int64_t>(value);
}

std::uint64_t cutUnsigned(double value) {
    if (value >= twoTo64)
        return std::numeric_limits<std::uint64_t>::max();
    return value >= twoTo63 ? static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(cut(value));
}

template <class T>
Ref<NSString> digits(T value) {
    DecimalBuffer buffer;
    const std::string_view text = decimalText(value, buffer);
    return make<NSString>(std::u16string(text.begin(), text.end()));
}

} // namespace

Ref<NSNumber> NSNumber::numberWithBool(bool value) {
    static const auto &truth = *new Ref<NSNumber>(make<NSNumber>('B', std::uint64_t{1}));
    static const auto &falsehood = *new Ref<NSNumber>(make<NSNumber>('B', std::uint64_t{0}));
    return value ? truth : falsehood;
}

bool NSNumber::isUnsigned() const {
    return encoding_ == 'B' || (encoding_ >= 'A' && encoding_ <= 'Z');
}

bool NSNumber::boolValue() const {
    return isFloating() ? floating_ != 0 : signed_ != 0;
}

const NSDecimal &NSNumber::decimal() const {
    return static_cast<const NSDecimalNumber *>(this)->value();
}

NSDecimal NSNumber::decimalValue() const {
    return isDecimal() ? decimal() : NSDecimal::read(stringValue()->utf8()).rounded();
}

std::int64_t NSNumber::longLongValue() const {
    if (isDecimal())
        return decimal().longLongValue();
    return isFloating() ? cut(floating_) : signed_;
}

std::uint64_t NSNumber::unsignedLongLongValue() const {
    if (isDecimal())
        return decimal().unsignedLongLongValue();
    return isFloating() ? cutUnsigned(floating_) : unsigned_;
}

void NSNumber::getValue(void *value, NSUInteger size) const {
    checkSize(size);
    runtime::withNumberType(objCType(), [&]<class T>() {
        const T narrow = valueAs<T>();
        std::memcpy(value, &narrow, sizeof narrow);
    });
}

double NSNumber::doubleValue() const {
    if (isFloating())
        return floating_;
    return isUnsigned() ? static_cast<double>(unsigned_) : static_cast<double>(signed_);
}

Ref<NSString> NSNumber::stringValue() const {
    if (encoding_ == 'f')
        return digits(static_cast<float>(floating_));
    if (encoding_ == 'd')
        return digits(floating_);
    if (isDecimal())
        return NSString::stringWithUTF8String(decimal().text());
    return isUnsigned() ? digits(unsigned_) : digits(signed_);
}

bool NSNumber::isEqual(const id &other) const {
    const auto number = as<NSNumber>(other);
    if (!number)
        return false;
    if (number->isDecimal())
        return number->isEqual(self());
    if (isFloating() && number->isFloating())
        return floating_ == number->floating_ || (std::isnan(floating_) && std::isnan(number->floating_));
    if (isFloating())
        return number->equalsFloating(floating_);
    if (number->isFloating())
        return equalsFloating(number->floating_);
    // With different signedness, equal bits are equal numbers only if the signed one is not negative.
    return unsigned_ == number->unsigned_ && (isUnsigned() == number->isUnsigned() || signed_ >= 0);
}

// An integer may be rounded when it becomes a double, so the double is converted back and compared, too.
bool NSNumber::equalsFloating(double value) const {
    if (doubleValue() != value)
        return false;
    return isUnsigned() ? value < twoTo64 && cutUnsigned(value) == unsigned_
                        : value < twoTo63 && cut(value) == signed_;
}

// Equal numbers of all kinds have the same hash. Whole numbers are hashed as integers, since thousands of
// large ones share their nearest double; only the others are hashed as doubles.
NSUInteger NSNumber::hash() const {
    if (!isFloating())
        return keyedHash(unsigned_);
    const bool whole = floating_ >= -twoTo63 && floating_ < twoTo64 && floating_ == std::trunc(floating_);
    return whole ? keyedHash(cutUnsigned(floating_)) : keyedHash(floating_);
}
