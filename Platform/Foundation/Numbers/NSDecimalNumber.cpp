#include "Platform/Foundation/Numbers/NSDecimalNumber.h"

#include "Platform/Foundation/Data/KeyedHash.h"
#include "Platform/Foundation/Text/NSCharacterSet.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Class.h"

#include <cmath>

NS_IMPLEMENTATION(NSDecimalNumber) {
    cls.instantiate([]() -> id { return notANumber(); });
}

Ref<NSDecimalNumber> NSDecimalNumber::decimalNumberWithString(const Ref<NSString> &text) {
    if (!text)
        return notANumber();
    const auto trimmed =
        text->stringByTrimmingCharactersInSet(NSCharacterSet::whitespaceAndNewlineCharacterSet());
    return decimalNumberWithDecimal(NSDecimal::read(trimmed->utf8()));
}

NSComparisonResult NSDecimalNumber::compare(const Ref<NSNumber> &other) const {
    NSDecimal there = NSDecimal::notANumber();
    if (other && other->isFloating() && !other->isDecimal()) {
        const double value = other->doubleValue();
        if (std::isinf(value))
            return value < 0 && !value_.isNotANumber ? NSComparisonResult::OrderedDescending
                                                     : NSComparisonResult::OrderedAscending;
        there = NSDecimal::exactly(value);
    } else if (other) {
        there = other->decimalValue();
    }
    const auto order = value_ <=> there;
    return std::is_lt(order)   ? NSComparisonResult::OrderedAscending
           : std::is_gt(order) ? NSComparisonResult::OrderedDescending
                               : NSComparisonResult::OrderedSame;
}

bool NSDecimalNumber::isEqual(const id &other) const {
    const auto number = as<NSNumber>(other);
    return number && compare(number) == NSComparisonResult::OrderedSame;
}

// Values that integers or doubles can have are hashed like those, since they may be equal. Other values are
// hashed by their text: by the nearest double, all decimals near a double would have the same hash.
NSUInteger NSDecimalNumber::hash() const {
    const bool whole =
        value_.exponent >= 0 && value_ < NSDecimal::exactly(0x1p64) && value_ >= NSDecimal::exactly(-0x1p63);
    if (whole)
        return keyedHash(value_.unsignedLongLongValue());
    const bool shared = value_.isNotANumber || NSDecimal::exactly(doubleValue()) == value_;
    return shared ? NSNumber::hash() : keyedHash(value_.text());
}
