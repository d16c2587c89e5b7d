// Texts with attributes: every code unit has a dictionary of attributes.
//
//     auto text = NSMutableAttributedString::attributedStringWithString(u"low toner"_ns);
//     text->addAttribute(u"weight"_ns, u"bold"_ns, {0, 3});
//     NSRange range;
//     text->attributesAtIndex(2, &range);   // {weight = bold;}, range {0, 3}
//
// Threads: an NSAttributedString is immutable and may be read from any thread; an NSMutableAttributedString
// belongs to one thread at a time.
//
// Errors: indexes and ranges past the end raise NSRangeException. None as a text counts as the empty text,
// none as attributes as no attributes. Adding an attribute without a name or a value raises
// NSInvalidArgumentException.
#pragma once

#include "Platform/Foundation/Text/NSRange.h"
#include "Platform/Runtime/Object/NSObject.h"

#include <map>

#pragma GCC visibility push(default)

class NSDictionary;

class NSAttributedString : public NSObject {
    NS_CLASS(NSAttributedString, NSObject)
public:
    /// The attributes of each run of code units, by the index one past the run's last unit. The last run ends
    /// with the text.
    using Runs = std::map<NSUInteger, Ref<NSDictionary>>;

    NSAttributedString();
    /// The text must be immutable, and the runs must cover it.
    NSAttributedString(Ref<NSString> text, Runs runs) : text_(std::move(text)), runs_(std::move(runs)) {}

    static Ref<NSAttributedString> attributedStringWithString(const Ref<NSString> &text,
                                                              const Ref<NSDictionary> &attributes = nullptr);

    virtual Ref<NSString> string() const { return text_; }
    NSUInteger length() const;
    const Runs &runs() const { return runs_; }
    /// Never none. `effectiveRange`, if not null, is set to a range of code units with the same attributes,
    /// not always the longest one.
    Ref<NSDictionary> attributesAtIndex(NSUInteger index, NSRange *effectiveRange = nullptr) const;
    /// `attribute:atIndex:effectiveRange:`; none when the code unit does not have the attribute.
    id attribute(const Ref<NSString> &name, NSUInteger index, NSRange *effectiveRange = nullptr) const;
    Ref<NSAttributedString> attributedSubstringFromRange(NSRange range) const;

    bool isEqualToAttributedString(const Ref<NSAttributedString> &other) const;
    bool isEqual(const id &other) const override;
    /// The hash of the text.
    NSUInteger hash() const override;
    /// Each run followed by its attributes.
    Ref<NSString> description() const override;
    id copy() const override { return self(); }
    id mutableCopy() const override;

protected:
    friend class NSMutableAttributedString;

    Ref<NSString> text_; // in the mutable subclass an NSMutableString of its own
    Runs runs_;          // empty for the empty text
};

class NSMutableAttributedString : public NSAttributedString {
    NS_CLASS(NSMutableAttributedString, NSAttributedString)
public:
    NSMutableAttributedString();
    /// Copies the text, which the runs must cover.
    NSMutableAttributedString(const Ref<NSString> &text, Runs runs);

    static Ref<NSMutableAttributedString>
    attributedStringWithString(const Ref<NSString> &text, const Ref<NSDictionary> &attributes = nullptr);

    /// An immutable copy of the text, which is made once after each change of the text.
    Ref<NSString> string() const override;

    /// Sets one attribute in the range, and keeps the others.
    void addAttribute(const Ref<NSString> &name, const id &value, NSRange range);
    /// Replaces all attributes in the range.
    void setAttributes(const Ref<NSDictionary> &attributes, NSRange range);
    void removeAttribute(const Ref<NSString> &name, NSRange range);
    /// Does nothing for none. Takes time proportional to what is added.
    void appendAttributedString(const Ref<NSAttributedString> &other);

    id copy() const override { return make<NSAttributedString>(string(), runs_); }

private:
    void cutAt(NSUInteger index);
    template <class Change>
    void change(const char *operation, NSRange range, const Change &change);

    mutable Ref<NSString> asItIs_; // an immutable copy of the text, once it was asked for
};

#pragma GCC visibility pop
