#include "Platform/Foundation/NSAttributedString.h"

#include "Platform/Foundation/NSDictionary.h"
#include "Platform/Foundation/NSString.h"
#include "Platform/Runtime/Class.h"
#include "Platform/Runtime/NSException.h"

#include <algorithm>

NS_IMPLEMENTATION(NSAttributedString) {
    cls.method<&NSAttributedString::string>("string").method<&NSAttributedString::length>("length");
}

NS_IMPLEMENTATION(NSMutableAttributedString) {}

namespace {

using Run = NSAttributedString::Run;

void check(const char *operation, bool fits) {
    if (!fits)
        throw NSException(NSRangeException, std::string("-[") + operation + "]: out of bounds");
}

std::vector<Run> oneRun(NSUInteger length, const Ref<NSDictionary> &attributes) {
    if (length == 0)
        return {};
    return {{length, attributes ? as<NSDictionary>(attributes->copy()) : NSDictionary::dictionary()}};
}

std::vector<Run>::const_iterator runAt(const std::vector<Run> &runs, NSUInteger index) {
    return std::upper_bound(runs.begin(), runs.end(), index,
                            [](NSUInteger place, const Run &run) { return place < run.end; });
}

void append(std::vector<Run> &runs, NSUInteger end, const Ref<NSDictionary> &attributes) {
    if (!runs.empty() && runs.back().attributes->isEqual(attributes))
        runs.back().end = end;
    else
        runs.push_back({end, attributes});
}

template <class Made>
Ref<Made> attributed(const Ref<NSString> &text, const Ref<NSDictionary> &attributes) {
    const auto immutable = text ? as<NSString>(text->copy()) : NSString::string();
    return make<Made>(immutable, oneRun(immutable->length(), attributes));
}

} // namespace

NSAttributedString::NSAttributedString() : text_(NSString::string()) {}

Ref<NSAttributedString> NSAttributedString::attributedStringWithString(const Ref<NSString> &text,
                                                                       const Ref<NSDictionary> &attributes) {
    return attributed<NSAttributedString>(text, attributes);
}

Ref<NSMutableAttributedString>
NSMutableAttributedString::attributedStringWithString(const Ref<NSString> &text,
                                                      const Ref<NSDictionary> &attributes) {
    return attributed<NSMutableAttributedString>(text, attributes);
}

NSUInteger NSAttributedString::length() const {
    return text_->length();
}

Ref<NSDictionary> NSAttributedString::attributesAtIndex(NSUInteger index, NSRange *effectiveRange) const {
    check("NSAttributedString attributesAtIndex:effectiveRange:", index < length());
    const auto run = runAt(runs_, index);
    const NSUInteger start = run == runs_.begin() ? 0 : std::prev(run)->end;
    if (effectiveRange)
        *effectiveRange = {start, run->end - start};
    return run->attributes;
}

id NSAttributedString::attribute(const Ref<NSString> &name, NSUInteger index, NSRange *effectiveRange) const {
    return attributesAtIndex(index, effectiveRange)->objectForKey(name);
}

Ref<NSAttributedString> NSAttributedString::attributedSubstringFromRange(NSRange range) const {
    check("NSAttributedString attributedSubstringFromRange:", range.fits(length()));
    std::vector<Run> runs;
    for (auto run = runAt(runs_, range.location); run != runs_.end(); ++run) {
        const NSUInteger end = std::min(run->end, range.end());
        if (range.length)
            append(runs, end - range.location, run->attributes);
        if (end == range.end())
            break;
    }
    return make<NSAttributedString>(text_->substringWithRange(range), std::move(runs));
}

bool NSAttributedString::isEqualToAttributedString(const Ref<NSAttributedString> &other) const {
    if (!other || !other->text_->isEqual(text_))
        return false;
    auto mine = runs_.cbegin(), theirs = other->runs_.cbegin();
    while (mine != runs_.end() && theirs != other->runs_.end()) {
        if (!mine->attributes->isEqual(theirs->attributes))
            return false;
        const NSUInteger end = std::min(mine->end, theirs->end);
        mine += mine->end == end;
        theirs += theirs->end == end;
    }
    return true;
}

bool NSAttributedString::isEqual(const id &other) const {
    return isEqualToAttributedString(as<NSAttributedString>(other));
}

NSUInteger NSAttributedString::hash() const {
    return text_->hash();
}

Ref<NSString> NSAttributedString::description() const {
    const auto made = NSMutableString::string();
    NSUInteger start = 0;
    for (const Run &run : runs_) {
        made->appendString(text_->substringWithRange({start, run.end - start}));
        made->appendString(run.attributes->description());
        start = run.end;
    }
    return as<NSString>(made->copy());
}

id NSAttributedString::mutableCopy() const {
    return make<NSMutableAttributedString>(text_, runs_);
}

/// Replaces the attributes of every run in the range, cut where the range begins and ends.
template <class Change>
void NSMutableAttributedString::change(const char *operation, NSRange range, const Change &change) {
    check(operation, range.fits(length()));
    std::vector<Run> runs;
    NSUInteger start = 0;
    for (const Run &run : runs_) {
        const NSUInteger from = std::clamp(range.location, start, run.end);
        const NSUInteger to = std::clamp(range.end(), start, run.end);
        if (from > start)
            append(runs, from, run.attributes);
        if (to > from)
            append(runs, to, change(run.attributes));
        if (run.end > to)
            append(runs, run.end, run.attributes);
        start = run.end;
    }
    runs_ = std::move(runs);
}

void NSMutableAttributedString::addAttribute(const Ref<NSString> &name, const id &value, NSRange range) {
    change("NSMutableAttributedString addAttribute:value:range:", range, [&](const Ref<NSDictionary> &old) {
        const auto attributes = NSMutableDictionary::dictionaryWithDictionary(old);
        attributes->setObject(value, name);
        return as<NSDictionary>(attributes->copy());
    });
}

void NSMutableAttributedString::removeAttribute(const Ref<NSString> &name, NSRange range) {
    change("NSMutableAttributedString removeAttribute:range:", range, [&](const Ref<NSDictionary> &old) {
        const auto attributes = NSMutableDictionary::dictionaryWithDictionary(old);
        attributes->removeObjectForKey(name);
        return as<NSDictionary>(attributes->copy());
    });
}

void NSMutableAttributedString::setAttributes(const Ref<NSDictionary> &attributes, NSRange range) {
    auto immutable = attributes ? as<NSDictionary>(attributes->copy()) : NSDictionary::dictionary();
    change("NSMutableAttributedString setAttributes:range:", range,
           [&](const Ref<NSDictionary> &) { return immutable; });
}

void NSMutableAttributedString::appendAttributedString(const Ref<NSAttributedString> &other) {
    if (!other)
        return;
    const NSUInteger start = length();
    const std::vector<Run> added = other->runs(); // a copy: the other may be this one
    text_ = text_->stringByAppendingString(other->string());
    for (const Run &run : added)
        append(runs_, start + run.end, run.attributes);
}
