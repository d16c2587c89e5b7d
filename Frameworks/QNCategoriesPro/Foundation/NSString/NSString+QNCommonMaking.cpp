// Texts made from sizes, times and chance, and the order of versions.
#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+QNCommon.h"

#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Dates/NSDate.h"
#include "Platform/Foundation/Dates/NSDateFormatter.h"
#include "Platform/Foundation/Text/NSString.h"

#include <array>
#include <cstdlib>

namespace {

constexpr std::u16string_view randomCharacters = u"ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";

bool isBlank(const Ref<NSString> &text) {
    const auto trimmed = qn::stringByTrim(text);
    return !trimmed || trimmed->length() == 0;
}

NSInteger numberAtIndex(const Ref<NSArray> &parts, NSUInteger index) {
    return as<NSString>(parts->objectAtIndex(index))->integerValue();
}

} // namespace

Ref<NSString> qn::UUID() {
    std::array<std::uint8_t, 16> bytes;
    arc4random_buf(bytes.data(), bytes.size());
    bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0F) | 0x40); // version 4: random
    bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3F) | 0x80); // the variant that has versions
    const auto text = NSMutableString::string();
    for (std::size_t i = 0; i < bytes.size(); ++i)
        text->appendFormat(i == 4 || i == 6 || i == 8 || i == 10 ? "-%02X" : "%02X", bytes[i]);
    return as<NSString>(text->copy());
}

Ref<NSString> qn::timeStamp() {
    return NSString::stringWithFormat(
        "%lld", static_cast<std::int64_t>(NSDate::date()->timeIntervalSince1970() * 1000));
}

Ref<NSString> qn::timeStampToString(const Ref<NSString> &timeStamp, const Ref<NSString> &format) {
    if (!timeStamp)
        return nullptr;
    const auto seconds = static_cast<NSTimeInterval>(timeStamp->integerValue());
    return make<NSDateFormatter>(format)->stringFromDate(NSDate::dateWithTimeIntervalSince1970(seconds));
}

Ref<NSString> qn::getRandomString() {
    std::u16string text(4, u'\0');
    for (char16_t &unit : text)
        unit = randomCharacters[arc4random_uniform(randomCharacters.size())];
    return make<NSString>(std::move(text));
}

Ref<NSString> qn::convertDataSize(std::uint64_t size, bool diskMode) {
    static constexpr const char *units[] = {"B", "KB", "MB", "GB", "TB", "PB", "EB", "ZB", "YB"};
    if (size == 0)
        return u"0B"_ns;
    const double base = diskMode ? 1000 : 1024, bytes = static_cast<double>(size);
    double unit = 1;
    std::size_t i = 0;
    for (; i + 1 < std::size(units) && bytes >= unit * base; ++i)
        unit *= base;
    return NSString::stringWithFormat("%.2f%s", bytes / unit, units[i]);
}

Ref<NSString> qn::stringFromFileSize(std::uint64_t size) {
    return convertDataSize(size, false);
}

Ref<NSString> qn::stringFromDiskSize(std::uint64_t size) {
    return convertDataSize(size, true);
}

NSInteger qn::compareVesion(const Ref<NSString> &currentV, const Ref<NSString> &newV) {
    if (isBlank(currentV) || isBlank(newV))
        return 0;
    const auto current = currentV->componentsSeparatedByString(u"."_ns);
    const auto later = newV->componentsSeparatedByString(u"."_ns);
    for (NSUInteger i = 0; i < std::max(current->count(), later->count()); ++i) {
        const NSInteger a = numberAtIndex(current, i), b = numberAtIndex(later, i);
        if (a != b)
            return b > a ? -1 : 1;
    }
    return 0;
}
