#include "Frameworks/QNCategoriesPro/Foundation/NSString/Validation/PostalCodes.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSString/Validation/TextMatcher.h"

#include <algorithm>
#include <iterator>
#include <map>

namespace {

struct PostalCode {
    std::u16string_view country, pattern;
};

constexpr std::u16string_view threeDigits = u"[0-9]{3}", fourDigits = u"[0-9]{4}", fiveDigits = u"[0-9]{5}",
                              sixDigits = u"[0-9]{6}", fourFromOne = u"[1-9][0-9]{3}";

constexpr PostalCode postalCodes[] = {
    {u"AD", u"AD[1-7][0-9]{2}"},
    {u"AR", u"[0-9]{4}|[A-HJ-NP-Z][0-9]{4}[A-Z]{3}"},
    {u"AT", fourFromOne},
    {u"AU", fourDigits},
    {u"BE", fourFromOne},
    {u"BG", fourFromOne},
    {u"BR", u"[0-9]{5}-?[0-9]{3}"},
    {u"CA", u"[ABCEGHJ-NPRSTVXY][0-9][ABCEGHJ-NPRSTV-Z] ?[0-9][ABCEGHJ-NPRSTV-Z][0-9]"},
    {u"CH", fourFromOne},
    {u"CL", u"[0-9]{3}-?[0-9]{4}"},
    {u"CN", sixDigits},
    {u"CY", fourFromOne},
    {u"CZ", u"[1-7][0-9]{2} ?[0-9]{2}"},
    {u"DE", fiveDigits},
    {u"DK", fourDigits},
    {u"EE", fiveDigits},
    {u"ES", u"(?:0[1-9]|[1-4][0-9]|5[0-2])[0-9]{3}"},
    {u"FI", fiveDigits},
    {u"FR", fiveDigits},
    {u"GB", u"GIR ?0AA|(?:[A-PR-UWYZ][0-9][0-9A-HJKPS-UW]?|[A-PR-UWYZ][A-HK-Y][0-9][0-9ABEHMNPRV-Y]?) "
            u"?[0-9][ABD-HJLNP-UW-Z]{2}"},
    {u"GR", u"[0-9]{3} ?[0-9]{2}"},
    {u"HR", fiveDigits},
    {u"HU", fourFromOne},
    {u"ID", fiveDigits},
    {u"IE", u"(?:[AC-FHKNPRTV-Y][0-9]{2}|D6W) ?[0-9AC-FHKNPRTV-Y]{4}"},
    {u"IL", u"[0-9]{7}|[0-9]{5}"},
    {u"IN", u"[1-9][0-9]{2} ?[0-9]{3}"},
    {u"IS", threeDigits},
    {u"IT", fiveDigits},
    {u"JP", u"[0-9]{3}-?[0-9]{4}"},
    {u"KR", fiveDigits},
    {u"LI", u"94(?:8[5-9]|9[0-8])"},
    {u"LT", u"(?:LT-)?[0-9]{5}"},
    {u"LU", u"(?:L-)?[1-9][0-9]{3}"},
    {u"LV", u"(?:LV-)?[0-9]{4}"},
    {u"MC", u"980[0-9]{2}"},
    {u"MT", u"[A-Z]{3} ?[0-9]{4}"},
    {u"MX", fiveDigits},
    {u"MY", fiveDigits},
    {u"NL", u"[1-9][0-9]{3} ?(?!SA|SD|SS)[A-Z]{2}"},
    {u"NO", fourDigits},
    {u"NZ", fourDigits},
    {u"PH", fourDigits},
    {u"PL", u"[0-9]{2}-[0-9]{3}"},
    {u"PT", u"[1-9][0-9]{3}-[0-9]{3}"},
    {u"RO", sixDigits},
    {u"RS", fiveDigits},
    {u"RU", sixDigits},
    {u"SE", u"[1-9][0-9]{2} ?[0-9]{2}"},
    {u"SG", sixDigits},
    {u"SI", u"(?:SI-)?[1-9][0-9]{3}"},
    {u"SK", u"[089][0-9]{2} ?[0-9]{2}"},
    {u"SM", u"4789[0-9]"},
    {u"TH", fiveDigits},
    {u"TR", fiveDigits},
    {u"TW", u"[0-9]{3}(?:-?[0-9]{2,3})?"},
    {u"UA", fiveDigits},
    {u"US", u"[0-9]{5}(?:-[0-9]{4})?"},
    {u"VA", u"00120"},
    {u"VN", u"[0-9]{5,6}"},
    {u"ZA", fourDigits},
};

} // namespace

bool qn::isPostalCodeOf(std::u16string_view country, std::u16string_view text) {
    thread_local std::map<std::u16string_view, TextMatcher> matchers; // of the countries asked for so far
    const auto found = std::ranges::find(postalCodes, country, &PostalCode::country);
    return found != std::end(postalCodes) &&
           matchers.try_emplace(found->country, found->pattern).first->second.matches(text);
}
