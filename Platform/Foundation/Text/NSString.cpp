#include "Platform/Foundation/Text/NSString.h"

#include "Platform/Foundation/Data/KeyedHash.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Text/NSCharacterSet.h"
#include "Platform/Foundation/Text/Unicode.h"
#include "Platform/Foundation/Text/UnicodeText.h"
#include "Platform/Runtime/Object/Class.h"
#include "Platform/Runtime/Object/Raise.h"

#include <algorithm>
#include <cstring>

NS_IMPLEMENTATION(NSString) {
    cls.method<&NSString::length>("length")
        .method<&NSString::isEqualToString>("isEqualToString:")
        .method<&NSString::compare>("compare:")
        .method<&NSString::caseInsensitiveCompare>("caseInsensitiveCompare:");
}

NS_IMPLEMENTATION(NSMutableString) {}

namespace {

NSComparisonResult comparisonResult(int order) {
    return order < 0   ? NSComparisonResult::OrderedAscending
           : order > 0 ? NSComparisonResult::OrderedDescending
                       : NSComparisonResult::OrderedSame;
}

} // namespace

Ref<NSString> NSString::stringWithString(const Ref<NSString> &text) {
    runtime::checkObject("NSString stringWithString:", text);
    return as<NSString>(text->copy());
}

Ref<NSString> NSString::stringWithUTF8String(std::string_view bytes) {
    auto units = unicode::utf16FromUTF8(bytes);
    return units ? make<NSString>(std::move(*units)) : nullptr;
}

Ref<NSString> NSString::stringWithASCIIString(const char *bytes) {
    if (!bytes)
        return nullptr;
    const std::string_view text(bytes);
    const bool ascii =
        std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    return ascii ? make<NSString>(std::u16string(text.begin(), text.end())) : nullptr;
}

unichar NSString::characterAtIndex(NSUInteger index) const {
    runtime::checkRange("NSString characterAtIndex:", {index, 1}, length());
    return units_[index];
}

std::string NSString::utf8() const {
    std::string bytes;
    unicode::appendUTF8(bytes, units_);
    return bytes;
}

std::optional<std::string> NSString::strictUTF8() const {
    return unicode::utf8FromUTF16(units_);
}

Ref<NSData> NSString::dataUsingUTF8() const {
    const auto bytes = strictUTF8();
    return bytes ? NSData::dataWithBytes(bytes->data(), bytes->size()) : nullptr;
}

bool NSString::isEqual(const id &other) const {
    if (other.get() == this)
        return true;
    const auto *text = peek<NSString>(other);
    // std::u16string's comparison goes unit by unit.
    return text && text->units_.size() == units_.size() &&
           std::memcmp(text->units_.data(), units_.data(), units_.size() * sizeof(char16_t)) == 0;
}

NSUInteger NSString::hash() const {
    NSUInteger hash = hash_.load(std::memory_order_relaxed);
    if (hash == 0) {
        hash = keyedHash(units_);
        hash_.store(hash, std::memory_order_relaxed);
    }
    return hash;
}

NSUInteger NSMutableString::hash() const {
    return keyedHash(units_);
}

Ref<NSString> NSString::description() const {
    return std::static_pointer_cast<NSString>(self());
}

id NSString::mutableCopy() const {
    return make<NSMutableString>(units_);
}

NSComparisonResult NSString::compare(const Ref<NSString> &other) const {
    runtime::checkObject("NSString compare:", other);
    return comparisonResult(units_.compare(other->units_));
}

NSComparisonResult NSString::caseInsensitiveCompare(const Ref<NSString> &other) const {
    runtime::checkObject("NSString caseInsensitiveCompare:", other);
    return comparisonResult(unicode::compareIgnoringCase(units_, other->units_));
}

bool NSString::hasPrefix(const Ref<NSString> &prefix) const {
    runtime::checkObject("NSString hasPrefix:", prefix);
    return units_.starts_with(prefix->units_);
}

bool NSString::hasSuffix(const Ref<NSString> &suffix) const {
    runtime::checkObject("NSString hasSuffix:", suffix);
    return units_.ends_with(suffix->units_);
}

bool NSString::containsString(const Ref<NSString> &text) const {
    return rangeOfString(text).location != NSNotFound;
}

NSRange NSString::rangeOfString(const Ref<NSString> &text) const {
    runtime::checkObject("NSString rangeOfString:", text);
    const auto found = text->units_.empty() ? std::u16string::npos : units_.find(text->units_);
    return found == std::u16string::npos ? NSRange{NSNotFound, 0} : NSRange{found, text->length()};
}

Ref<NSString> NSString::substringWithRange(NSRange range) const {
    runtime::checkRange("NSString substringWithRange:", range, length());
    return make<NSString>(units_.substr(range.location, range.length));
}

Ref<NSString> NSString::substringFromIndex(NSUInteger index) const {
    runtime::checkRange("NSString substringFromIndex:", {index, 0}, length());
    return make<NSString>(units_.substr(index));
}

Ref<NSString> NSString::substringToIndex(NSUInteger index) const {
    return substringWithRange({0, index});
}

Ref<NSString> NSString::stringByAppendingString(const Ref<NSString> &text) const {
    runtime::checkObject("NSString stringByAppendingString:", text);
    return make<NSString>(units_ + text->units_);
}

Ref<NSString> NSString::stringByReplacingOccurrencesOfString(const Ref<NSString> &target,
                                                             const Ref<NSString> &replacement) const {
    runtime::checkObject("NSString stringByReplacingOccurrencesOfString:withString:", target);
    runtime::checkObject("NSString stringByReplacingOccurrencesOfString:withString:", replacement);
    std::u16string result;
    std::size_t at = 0;
    for (std::size_t found;
         !target->units_.empty() && (found = units_.find(target->units_, at)) != std::u16string::npos;
         at = found + target->length()) {
        result.append(units_, at, found - at);
        result += replacement->units_;
    }
    result.append(units_, at);
    return make<NSString>(std::move(result));
}

Ref<NSString> NSString::stringByTrimmingCharactersInSet(const Ref<NSCharacterSet> &set) const {
    runtime::checkObject("NSString stringByTrimmingCharactersInSet:", set);
    std::u16string_view rest = units_;
    while (!rest.empty() && set->characterIsMember(rest.front()))
        rest.remove_prefix(1);
    while (!rest.empty() && set->characterIsMember(rest.back()))
        rest.remove_suffix(1);
    return make<NSString>(std::u16string(rest));
}

Ref<NSString> NSString::pathExtension() const {
    std::u16string_view name = units_;
    while (name.ends_with(u'/'))
        name.remove_suffix(1);
    name.remove_prefix(name.rfind(u'/') + 1); // from the start when there is none
    const auto dot = name.rfind(u'.');
    return dot == 0 || dot == name.npos ? string() : make<NSString>(std::u16string(name.substr(dot + 1)));
}

Ref<NSString> NSString::lowercaseString() const {
    return make<NSString>(unicode::lowercase(units_));
}

Ref<NSString> NSString::uppercaseString() const {
    return make<NSString>(unicode::uppercase(units_));
}

NSRange NSString::rangeOfComposedCharacterSequencesForRange(NSRange range) const {
    runtime::checkRange("NSString rangeOfComposedCharacterSequencesForRange:", range, length());
    return unicode::widenedToCharacters(units_, range);
}

void NSMutableString::appendString(const Ref<NSString> &text) {
    runtime::checkObject("NSString appendString:", text);
    units_ += text->units();
}

void NSMutableString::setString(const Ref<NSString> &text) {
    runtime::checkObject("NSString setString:", text);
    units_ = text->units();
}

void NSMutableString::replaceCharactersInRange(NSRange range, const Ref<NSString> &text) {
    runtime::checkObject("NSString replaceCharactersInRange:withString:", text);
    runtime::checkRange("NSString replaceCharactersInRange:withString:", range, length());
    units_.replace(range.location, range.length, text->units());
}
