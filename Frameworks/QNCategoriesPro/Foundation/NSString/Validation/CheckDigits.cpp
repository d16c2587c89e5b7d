#include "Frameworks/QNCategoriesPro/Foundation/NSString/Validation/CheckDigits.h"

#include "Platform/Ascii/Ascii.h"

#include <algorithm>

namespace {

unsigned valueOf(char16_t unit) {
    return ascii::isDigit(unit) ? unit - u'0' : unit - u'A' + 10u;
}

} // namespace

bool qn::isDigits(std::u16string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), ascii::isDigit<char16_t>);
}

bool qn::passesLuhn(std::u16string_view digits) {
    unsigned sum = 0;
    bool isDoubled = false;
    for (auto unit = digits.rbegin(); unit != digits.rend(); ++unit, isDoubled = !isDoubled) {
        const unsigned value = valueOf(*unit) << isDoubled;
        sum = (sum + value / 10 + value % 10) % 10;
    }
    return sum == 0;
}

bool qn::passesMod11_2(std::u16string_view digitsAndCheck) {
    unsigned remainder = 0;
    for (const char16_t unit : digitsAndCheck)
        remainder = (2 * remainder + (unit == u'X' ? 10 : valueOf(unit))) % 11;
    return remainder == 1;
}

bool qn::passesMod97(std::u16string_view digitsAndCapitals) {
    unsigned remainder = 0;
    for (const char16_t unit : digitsAndCapitals)
        remainder = (remainder * (ascii::isDigit(unit) ? 10 : 100) + valueOf(unit)) % 97;
    return remainder == 1;
}
