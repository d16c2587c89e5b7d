#include "Platform/Foundation/NSURL.h"

#include "Platform/Foundation/NSCharacterSet.h"
#include "Platform/Foundation/NSString.h"
#include "Platform/Runtime/Class.h"

#include <algorithm>
#include <array>
#include <filesystem>

NS_IMPLEMENTATION(NSURL) {
    cls.method<&NSURL::absoluteString>("absoluteString").method<&NSURL::path>("path");
}

namespace {

constexpr auto standsInURL = [] {
    std::array<bool, 0x7F> stands{};
    std::fill(stands.begin() + u'!', stands.end(), true);
    for (const char16_t unit : std::u16string_view(u"\"<>\\^`{|}"))
        stands[unit] = false;
    return stands;
}();

bool mayStandInURL(char16_t unit) {
    return unit < standsInURL.size() && standsInURL[unit];
}

/// Where the scheme ends: its colon, or 0 when there is none.
std::size_t schemeLength(const std::u16string &text) {
    const std::size_t end = text.find_first_of(u":/?#");
    return end != std::u16string::npos && text[end] == u':' ? end : 0;
}

} // namespace

Ref<NSURL> NSURL::URLWithString(const Ref<NSString> &text) {
    return text && std::all_of(text->units().begin(), text->units().end(), mayStandInURL)
               ? make<NSURL>(as<NSString>(text->copy()))
               : nullptr;
}

Ref<NSURL> NSURL::fileURLWithPath(const Ref<NSString> &path) {
    const auto utf8 = path ? path->strictUTF8() : std::nullopt;
    if (!utf8)
        return nullptr;
    const auto absolute = NSString::stringWithUTF8String(std::filesystem::absolute(*utf8).string());
    const auto allowed =
        NSCharacterSet::URLQueryAllowedCharacterSet()->setByRemovingCharactersInString(u"?;");
    return make<NSURL>(NSString::stringWithFormat(
        "file://%@", absolute->stringByAddingPercentEncodingWithAllowedCharacters(allowed)));
}

Ref<NSString> NSURL::scheme() const {
    const std::size_t length = schemeLength(text_->units());
    return length ? text_->substringToIndex(length)->lowercaseString() : nullptr;
}

bool NSURL::isFileURL() const {
    const auto name = scheme();
    return name && name->units() == u"file";
}

Ref<NSString> NSURL::path() const {
    const std::u16string &text = text_->units();
    const std::size_t scheme = schemeLength(text);
    std::size_t start = scheme ? scheme + 1 : 0;
    if (text.compare(start, 2, u"//") == 0)
        start = std::min(text.find_first_of(u"/?#", start + 2), text.size());
    const std::size_t end = std::min(text.find_first_of(u"?#", start), text.size());
    return text_->substringWithRange({start, end - start})->stringByRemovingPercentEncoding();
}

bool NSURL::isEqual(const id &other) const {
    const auto url = as<NSURL>(other);
    return url && url->text_->isEqual(text_);
}

NSUInteger NSURL::hash() const {
    return text_->hash();
}
