#include "Platform/Foundation/Collections/NSAttributedString.h"

#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Class.h"

#include <algorithm>

NS_IMPLEMENTATION(NSAttributedString) {
    cls.method<&NSAttributedString::string>("string").method<&NSAttributedString::length>("length");
}

NS_IMPLEMENTATION(NSMutableAttributedString) {}

namespace {

using Runs = NSAttributedString::Runs;

Runs oneRun(NSUInteger length, const Ref<NSDictionary> &attributes) {
    if (length == 0)
        return {};
    return {{length, attributes ? as<NSDictionary>(attributes->copy()) : NSDictionary::dictionary()}};
}

/// Extends the last run to `end` if it has these attributes; else adds a run.
void append(Runs &runs, NSUInteger end, const Ref<NSDictionary> &attributes) {
    if (runs.empty() || !runs.rbegin()->second->isEqual(attributes)) {
        runs.emplace_hint(runs.end(), end, attributes);
        return;
    }
    auto last = runs.extract(std::prev(runs.end()));
    last.key() = end;
    runs.insert(runs.end(), std::move(last));
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
    runtime::checkIndex("NSAttributedString attributesAtIndex:effectiveRange:", index, length());
    const auto run = runs_.upper_bound(index);
    const NSUInteger start = run == runs_.begin() ? 0 : std::prev(run)->first;
    if (effectiveRange)
        *effectiveRange = {start, run->first - start};
    return run->second;
}

id NSAttributedString::attribute(const Ref<NSString> &name, NSUInteger index, NSRange *effectiveRange) const {
    return attributesAtIndex(index, effectiveRange)->objectForKey(name);
}

Ref<NSAttributedString> NSAttributedString::attributedSubstringFromRange(NSRange range) const {
    runtime::checkRange("NSAttributedString attributedSubstringFromRange:", range, length());
    Runs runs;
    NSUInteger end = range.location;
    for (auto run = runs_.upper_bound(end); end < range.end(); ++run) {
        end = std::min(run->first, range.end());
        runs.emplace_hint(runs.end(), end - range.location, run->second);
    }
    return make<NSAttributedString>(text_->substringWithRange(range), std::move(runs));
}

bool NSAttributedString::isEqualToAttributedString(const Ref<NSAttributedString> &other) const {
    if (!other || !other->text_->isEqual(text_))
        return false;
    auto mine = runs_.cbegin(), theirs = other->runs_.cbegin();
    while (mine != runs_.end() && theirs != other->runs_.end()) {
        if (!mine->second->isEqual(theirs->second))
            return false;
        const NSUInteger end = std::min(mine->first, theirs->first);
        if (mine->first == end)
            ++mine;
        if (theirs->first == end)
            ++theirs;
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
    for (const auto &[end, attributes] : runs_) {
        made->appendString(text_->substringWithRange({start, end - start}));
        made->appendString(attributes->description());
        start = end;
    }
    return as<NSString>(made->copy());
}

id NSAttributedString::mutableCopy() const {
    return make<NSMutableAttributedString>(string(), runs_);
}

NSMutableAttributedString::NSMutableAttributedString() : NSMutableAttributedString(NSString::string(), {}) {}

NSMutableAttributedString::NSMutableAttributedString(const Ref<NSString> &text, Runs runs)
    : NSAttributedString(as<NSString>(text->mutableCopy()), std::move(runs)) {}

Ref<NSString> NSMutableAttributedString::string() const {
    if (!asItIs_)
        asItIs_ = as<NSString>(text_->copy());
    return asItIs_;
}

/// Splits the run around the index, so that one ends there.
void NSMutableAttributedString::cutAt(NSUInteger index) {
    const auto run = runs_.lower_bound(index);
    if (index > 0 && run->first != index)
        runs_.emplace_hint(run, index, run->second);
}

/// Replaces the attributes of every run in the range. Runs are split at the ends of the range, and neighbours
/// that have become equal are merged.
template <class Change>
void NSMutableAttributedString::change(const char *operation, NSRange range, const Change &change) {
    runtime::checkRange(operation, range, length());
    if (range.length == 0)
        return;
    cutAt(range.location);
    cutAt(range.end());
    const auto behind = runs_.upper_bound(range.end());
    for (auto run = runs_.upper_bound(range.location); run != behind; ++run)
        run->second = change(run->second);
    for (auto run = runs_.lower_bound(range.location); run != behind;) {
        const auto former = run++;
        if (run != runs_.end() && former->second->isEqual(run->second))
            runs_.erase(former);
    }
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
    const Runs added = other->runs_; // a copy: the other may be this one
    as<NSMutableString>(text_)->appendString(other->text_);
    asItIs_.reset();
    for (const auto &[end, attributes] : added)
        append(runs_, start + end, attributes);
}
