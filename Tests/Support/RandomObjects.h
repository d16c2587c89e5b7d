// Random objects that JSON or a property list can hold, the same for the same seed.
#pragma once

#include "Platform/Foundation/Dates/NSDate.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/Random.h"

#include <bit>
#include <cmath>

class RandomObjects : public Random {
public:
    enum class Kind { JSON, PropertyList, Texts };

    RandomObjects(unsigned seed, Kind kind) : Random(seed), kind_(kind) {}

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
        auto units = Random::text<std::u16string>(pieces, 8);
        if (kind_ == Kind::JSON && below(4) == 0)
            units += static_cast<char16_t>(below(0x20));
        return make<NSString>(units);
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
            return number(below(2) == 1);
        case 1:
            return number(static_cast<std::int64_t>((*this)() >> below(64)));
        case 2:
            return number((*this)());
        case 3:
            return number(static_cast<double>(below(100000)) / 100);
        case 4: {
            const auto any = std::bit_cast<double>((*this)());
            return number(std::isfinite(any) ? any : 0);
        }
        default:
            return special();
        }
    }

    id special() {
        if (kind_ == Kind::JSON)
            return NSNull::null();
        const std::uint64_t bytes = (*this)();
        return below(2) ? id(NSData::dataWithBytes(&bytes, below(9)))
                        : id(NSDate::dateWithTimeIntervalSinceReferenceDate(
                              static_cast<double>(below(1u << 31)) * 50 - 4e10));
    }

    const Kind kind_;
};
