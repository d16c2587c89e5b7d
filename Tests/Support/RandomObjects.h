// Random objects that JSON or a property list can hold, the same for the same seed.
#pragma once

#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Collections/NSNull.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Dates/NSDate.h"
#include "Platform/Foundation/Numbers/NSNumber.h"
#include "Platform/Foundation/Text/NSString.h"

#include <bit>
#include <cmath>
#include <random>

class RandomObjects {
public:
    enum class Kind { JSON, PropertyList, Texts };

    RandomObjects(unsigned seed, Kind kind) : random_(seed), kind_(kind) {}

    std::size_t below(std::size_t bound) { return random_() % bound; }

    id container(int levels = 4) {
        const std::size_t count = below(5);
        const auto array = NSMutableArray::array();
        const auto dictionary = NSMutableDictionary::dictionary();
        for (std::size_t i = 0; i < count; ++i) {
            array->addObject(value(levels - 1));
            dictionary->setObject(value(levels - 1), text());
        }
        return below(2) ? id(array) : id(dictionary);
    }

    Ref<NSString> text() {
        static constexpr std::u16string_view pieces[] = {u"a",  u"Z",    u"0",    u" ",     u"\"",
                                                         u"\\", u"/",    u"<&>'", u"\n",    u"\t",
                                                         u"é",  u"激光", u"😀",    u"\u2028"};
        std::u16string units;
        for (std::size_t i = below(8); i > 0; --i)
            units += pieces[below(std::size(pieces))];
        if (kind_ == Kind::JSON && below(4) == 0)
            units += static_cast<char16_t>(below(0x20));
        return make<NSString>(units);
    }

    /// The bytes with up to three places overwritten, cut out or added to, half of them with one of `pieces`.
    std::string mutated(std::string bytes, std::string_view pieces) {
        for (std::size_t changes = 1 + below(3); changes > 0; --changes) {
            const bool overwrites = below(2);
            bytes.replace(below(bytes.size() + 1), overwrites ? 1 : below(4), overwrites || below(2),
                          below(2) ? pieces[below(pieces.size())] : static_cast<char>(below(256)));
        }
        return bytes;
    }

private:
    id value(int levels) {
        if (levels > 0 && below(3) == 0)
            return container(levels);
        return kind_ == Kind::Texts || below(3) == 0 ? id(text()) : scalar();
    }

    id scalar() {
        switch (below(6)) {
        case 0:
            return NSNumber::numberWithBool(below(2));
        case 1:
            return NSNumber::numberWithLongLong(static_cast<std::int64_t>(random_() >> below(64)));
        case 2:
            return NSNumber::numberWithUnsignedLongLong(random_());
        case 3:
            return NSNumber::numberWithDouble(static_cast<double>(below(100000)) / 100);
        case 4: {
            const auto any = std::bit_cast<double>(random_());
            return NSNumber::numberWithDouble(std::isfinite(any) ? any : 0);
        }
        default:
            return special();
        }
    }

    id special() {
        if (kind_ == Kind::JSON)
            return NSNull::null();
        const std::uint64_t bytes = random_();
        return below(2) ? id(NSData::dataWithBytes(&bytes, below(9)))
                        : id(NSDate::dateWithTimeIntervalSinceReferenceDate(
                              static_cast<double>(below(1u << 31)) * 50 - 4e10));
    }

    std::mt19937_64 random_;
    const Kind kind_;
};
