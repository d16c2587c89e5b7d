#include "Frameworks/QNCategoriesPro/Foundation/NSString/Validation/IBAN.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSString/Validation/CheckDigits.h"
#include "Platform/Ascii/Ascii.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace {

/// What follows country and check digits, in the registry's notation: how many digits (n), capitals (a) or
/// either (c).
struct AccountForm {
    std::u16string_view country, form;
};

constexpr AccountForm accountForms[] = {
    {u"AD", u"8n12c"},   {u"AE", u"19n"},     {u"AL", u"8n16c"},    {u"AT", u"16n"},
    {u"AZ", u"4a20c"},   {u"BA", u"16n"},     {u"BE", u"12n"},      {u"BG", u"4a6n8c"},
    {u"BH", u"4a14c"},   {u"BI", u"23n"},     {u"BR", u"23n1a1c"},  {u"BY", u"4c4n16c"},
    {u"CH", u"5n12c"},   {u"CR", u"18n"},     {u"CY", u"8n16c"},    {u"CZ", u"20n"},
    {u"DE", u"18n"},     {u"DJ", u"23n"},     {u"DK", u"14n"},      {u"DO", u"4c20n"},
    {u"EE", u"16n"},     {u"EG", u"25n"},     {u"ES", u"20n"},      {u"FI", u"14n"},
    {u"FK", u"2a12n"},   {u"FO", u"14n"},     {u"FR", u"10n11c2n"}, {u"GB", u"4a14n"},
    {u"GE", u"2a16n"},   {u"GI", u"4a15c"},   {u"GL", u"14n"},      {u"GR", u"7n16c"},
    {u"GT", u"24c"},     {u"HR", u"17n"},     {u"HU", u"24n"},      {u"IE", u"4a14n"},
    {u"IL", u"19n"},     {u"IQ", u"4a15n"},   {u"IS", u"22n"},      {u"IT", u"1a10n12c"},
    {u"JO", u"4a4n18c"}, {u"KW", u"4a22c"},   {u"KZ", u"3n13c"},    {u"LB", u"4n20c"},
    {u"LC", u"4a24c"},   {u"LI", u"5n12c"},   {u"LT", u"16n"},      {u"LU", u"3n13c"},
    {u"LV", u"4a13c"},   {u"LY", u"21n"},     {u"MC", u"10n11c2n"}, {u"MD", u"20c"},
    {u"ME", u"18n"},     {u"MK", u"3n10c2n"}, {u"MN", u"16n"},      {u"MR", u"23n"},
    {u"MT", u"4a5n18c"}, {u"MU", u"4a19n3a"}, {u"NI", u"4a20n"},    {u"NL", u"4a10n"},
    {u"NO", u"11n"},     {u"PK", u"4a16c"},   {u"PL", u"24n"},      {u"PS", u"4a21c"},
    {u"PT", u"21n"},     {u"QA", u"4a21c"},   {u"RO", u"4a16c"},    {u"RS", u"18n"},
    {u"RU", u"14n15c"},  {u"SA", u"2n18c"},   {u"SC", u"4a20n3a"},  {u"SD", u"14n"},
    {u"SE", u"20n"},     {u"SI", u"15n"},     {u"SK", u"20n"},      {u"SM", u"1a10n12c"},
    {u"SO", u"19n"},     {u"ST", u"21n"},     {u"SV", u"4a20n"},    {u"TL", u"19n"},
    {u"TN", u"20n"},     {u"TR", u"6n16c"},   {u"UA", u"6n19c"},    {u"VA", u"18n"},
    {u"VG", u"4a16n"},   {u"XK", u"16n"}};

bool isOfKind(char16_t unit, char16_t kind) {
    return (kind != u'a' && ascii::isDigit(unit)) || (kind != u'n' && ascii::isUpperCase(unit));
}

bool isOfForm(std::u16string_view text, std::u16string_view form) {
    while (!form.empty()) {
        std::size_t count = 0;
        for (; ascii::isDigit(form.front()); form.remove_prefix(1))
            count = 10 * count + static_cast<std::size_t>(form.front() - u'0');
        const char16_t kind = form.front();
        form.remove_prefix(1);
        if (text.size() < count ||
            !std::all_of(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(count),
                         [&](char16_t unit) { return isOfKind(unit, kind); }))
            return false;
        text.remove_prefix(count);
    }
    return text.empty();
}

} // namespace

bool qn::isCompactIBAN(std::u16string_view text) {
    constexpr std::size_t longest = 34, head = 4;
    if (text.size() <= head || text.size() > longest)
        return false;
    const auto country = text.substr(0, 2), check = text.substr(2, 2), account = text.substr(head);
    const auto found = std::ranges::find(accountForms, country, &AccountForm::country);
    // Check digits are 98 minus a remainder of 97, so 02 to 98; 00, 01 and 99 would also pass the sum, but
    // are not valid.
    if (found == std::end(accountForms) || !isOfForm(account, found->form) || !isDigits(check) ||
        check < u"02" || check > u"98")
        return false;
    std::u16string moved(account);
    moved += text.substr(0, head);
    return passesMod97(moved);
}
