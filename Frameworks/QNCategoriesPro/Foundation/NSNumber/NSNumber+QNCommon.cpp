#include "Frameworks/QNCategoriesPro/Foundation/NSNumber/NSNumber+QNCommon.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+QNCommon.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Collections/NSNull.h"
#include "Platform/Foundation/Numbers/NSNumber.h"
#include "Platform/Foundation/Numbers/NSNumberFormatter.h"
#include "Platform/Foundation/Text/NSScanner.h"
#include "Platform/Foundation/Text/NSString.h"

namespace {

/// Numbers, and the null marker for words that mean none.
const Ref<NSDictionary> &words() {
    static const auto &table = *new Ref<NSDictionary>([] {
        const id yes = NSNumber::numberWithBool(true), no = NSNumber::numberWithBool(false);
        return NSDictionary::dictionaryWithEntries({{u"true"_ns, yes},
                                                    {u"yes"_ns, yes},
                                                    {u"false"_ns, no},
                                                    {u"no"_ns, no},
                                                    {u"nil"_ns, NSNull::null()},
                                                    {u"null"_ns, NSNull::null()},
                                                    {u"<null>"_ns, NSNull::null()}});
    }());
    return table;
}

/// The scanner takes no sign, so a negative text has no value.
Ref<NSNumber> hexadecimalNumber(const Ref<NSString> &text) {
    const auto value = make<NSScanner>(text)->scanHexInt();
    return value ? NSNumber::numberWithLongLong(*value) : nullptr;
}

} // namespace

Ref<NSNumber> qn::numberWithString(const Ref<NSString> &text) {
    const auto trimmed = stringByTrim(text);
    if (!trimmed || trimmed->length() == 0)
        return nullptr;
    const auto word = trimmed->lowercaseString();
    if (const id known = words()->objectForKey(word))
        return as<NSNumber>(known);
    if (word->hasPrefix(u"0x"_ns) || word->hasPrefix(u"-0x"_ns))
        return hexadecimalNumber(word);
    return NSNumberFormatter::numberFromString(text);
}
