// Texts with attributes: every character has a dictionary of them.
//
//     auto text = NSMutableAttributedString::attributedStringWithString(u"low toner"_ns);
//     text->addAttribute(u"weight"_ns, u"bold"_ns, {0, 3});
//     NSRange range;
//     text->attributesAtIndex(2, &range);   // {weight = bold;}, range {0, 3}
//
// Threads: an NSAttributedString is immutable and may be read from any thread; an NSMutableAttributedString
// belongs to one thread at a time. Indexes and ranges past the end raise NSRangeException; none as a text is
// the empty one, none as attributes is no attributes.
#pragma once

#include "Platform/Foundation/Text/NSRange.h"
#include "Platform/Runtime/Object/NSObject.h"

#include <map>

class NSDictionary;

class NSAttributedString : public NSObject {
    NS_CLASS(NSAttributedString, NSObject)
public:
    /// The attributes of neighbouring characters, by where these end and the next ones begin; the last ones
    /// end with the text.
    using Runs = std::map<NSUInteger, Ref<NSDictionary>>;

    NSAttributedString();
    /// The text is immutable, and the runs cover it.
    NSAttributedString(Ref<NSString> text, Runs runs) : text_(std::move(text)), runs_(std::move(runs)) {}

    static Ref<NSAttributedString> attributedStringWithString(const Ref<NSString> &text,
                                                              const Ref<NSDictionary> &attributes = nullptr);

    virtual Ref<NSString> string() const { return text_; }
    NSUInteger length() const;
    const Runs &runs() const { return runs_; }
    /// Never none. The effective range is one in which they hold, not always the longest one.
    Ref<NSDictionary> attributesAtIndex(NSUInteger index, NSRange *effectiveRange = nullptr) const;
    /// `attribute:atIndex:effectiveRange:`; none when the character lacks it.
    id attribute(const Ref<NSString> &name, NSUInteger index, NSRange *effectiveRange = nullptr) const;
    Ref<NSAttributedString> attributedSubstringFromRange(NSRange range) const;

    bool isEqualToAttributedString(const Ref<NSAttributedString> &other) const;
    bool isEqual(const id &other) const override;
    /// That of the text.
    NSUInteger hash() const override;
    /// Each run followed by its attributes.
    Ref<NSString> description() const override;
    id copy() const override { return self(); }
    id mutableCopy() const override;

protected:
    friend class NSMutableAttributedString;

    Ref<NSString> text_; // of a mutable one a mutable text of its own
    Runs runs_;          // empty for the empty text
};

class NSMutableAttributedString : public NSAttributedString {
    NS_CLASS(NSMutableAttributedString, NSAttributedString)
public:
    NSMutableAttributedString();
    /// The runs cover the text, which is copied.
    NSMutableAttributedString(const Ref<NSString> &text, Runs runs);

    static Ref<NSMutableAttributedString>
    attributedStringWithString(const Ref<NSString> &text, const Ref<NSDictionary> &attributes = nullptr);

    /// The text as it is now. The first time after a change costs the length of the text.
    Ref<NSString> string() const override;

    /// In the range: the attribute beside the others; in the place of the others; without it.
    void addAttribute(const Ref<NSString> &name, const id &value, NSRange range);
    void setAttributes(const Ref<NSDictionary> &attributes, NSRange range);
    void removeAttribute(const Ref<NSString> &name, NSRange range);
    /// None adds nothing. Costs the length of what is added.
    void appendAttributedString(const Ref<NSAttributedString> &other);

    id copy() const override { return make<NSAttributedString>(string(), runs_); }

private:
    void cutAt(NSUInteger index);
    template <class Change>
    void change(const char *operation, NSRange range, const Change &change);

    mutable Ref<NSString> asItIs_; // an immutable copy of the text, once somebody has asked for it
};
