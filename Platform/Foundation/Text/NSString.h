// Texts: sequences of UTF-16 code units. Lengths, indices and ranges count code units. A text may contain
// lone surrogates; it then has no strict UTF-8 form.
//
// Errors: unless said otherwise, an operation raises NSInvalidArgumentException when an argument is none.
//
// Threads: an NSString is immutable and may be read from any thread. An NSMutableString belongs to one thread
// at a time.
#pragma once

#include "Platform/Foundation/Text/Format.h"
#include "Platform/Foundation/Text/NSComparison.h"
#include "Platform/Foundation/Text/NSRange.h"
#include "Platform/Runtime/Object/NSObject.h"

#include <array>
#include <atomic>
#include <optional>
#include <string>
#include <string_view>

#pragma GCC visibility push(default)

class NSArray;
class NSCharacterSet;
class NSData;

class NSString : public NSObject {
    NS_CLASS(NSString, NSObject)
public:
    NSString() = default;
    explicit NSString(std::u16string units) : units_(std::move(units)) {}

    static Ref<NSString> string() { return make<NSString>(); }
    /// An immutable copy.
    static Ref<NSString> stringWithString(const Ref<NSString> &text);
    /// None for bytes that are not valid UTF-8.
    static Ref<NSString> stringWithUTF8String(std::string_view bytes);
    /// The zero-terminated ASCII text; none for null and for a text with a byte above 127.
    static Ref<NSString> stringWithASCIIString(const char *bytes);
    /// See Format.h.
    template <class... Arguments>
    static Ref<NSString> stringWithFormat(std::string_view format, const Arguments &...arguments) {
        return make<NSString>(formatUTF16(
            format, std::array<FormatArgument, sizeof...(arguments)>{FormatArgument(arguments)...}));
    }

    NSUInteger length() const { return units_.size(); }
    /// Raises NSRangeException past the end.
    unichar characterAtIndex(NSUInteger index) const;
    const std::u16string &units() const { return units_; }

    /// UTF-8 with U+FFFD for every lone surrogate: for display.
    std::string utf8() const;
    /// UTF-8; nothing for a text with a lone surrogate: for transmission.
    std::optional<std::string> strictUTF8() const;
    /// The strict UTF-8 bytes, or none.
    Ref<NSData> dataUsingUTF8() const;

    bool isEqual(const id &other) const override;
    /// False for none.
    bool isEqualToString(const Ref<NSString> &other) const { return other && other->units_ == units_; }
    NSUInteger hash() const override;
    /// The text itself.
    Ref<NSString> description() const override;
    id copy() const override { return self(); }
    id mutableCopy() const override;
    /// By code units.
    NSComparisonResult compare(const Ref<NSString> &other) const;
    /// Ignores case, and whether an accented character is composed or decomposed.
    NSComparisonResult caseInsensitiveCompare(const Ref<NSString> &other) const;

    bool hasPrefix(const Ref<NSString> &prefix) const;
    bool hasSuffix(const Ref<NSString> &suffix) const;
    /// False for an empty text.
    bool containsString(const Ref<NSString> &text) const;
    /// The first occurrence, by code units. Location NSNotFound and length 0 without one and for an empty
    /// text.
    NSRange rangeOfString(const Ref<NSString> &text) const;

    /// Raise NSRangeException when the range or index does not fit.
    Ref<NSString> substringWithRange(NSRange range) const;
    Ref<NSString> substringFromIndex(NSUInteger index) const;
    Ref<NSString> substringToIndex(NSUInteger index) const;

    Ref<NSString> stringByAppendingString(const Ref<NSString> &text) const;
    template <class... Arguments>
    Ref<NSString> stringByAppendingFormat(std::string_view format, const Arguments &...arguments) const {
        return stringByAppendingString(stringWithFormat(format, arguments...));
    }
    Ref<NSString> stringByReplacingOccurrencesOfString(const Ref<NSString> &target,
                                                       const Ref<NSString> &replacement) const;

    Ref<NSString> stringByTrimmingCharactersInSet(const Ref<NSCharacterSet> &set) const;
    /// At least one part: the text itself when it does not contain the separator or that is empty.
    Ref<NSArray> componentsSeparatedByString(const Ref<NSString> &separator) const;
    /// What follows the last dot of the last path component: "png" of "/a.d/b.png". Empty without a dot, and
    /// when the only dot begins the component (".profile").
    Ref<NSString> pathExtension() const;

    /// By Unicode's language-independent rules; the length may change.
    Ref<NSString> lowercaseString() const;
    Ref<NSString> uppercaseString() const;
    /// The range extended to whole user-perceived characters, so that it splits no surrogate pair, combining
    /// sequence or joined emoji. Raises NSRangeException when the range does not fit.
    NSRange rangeOfComposedCharacterSequencesForRange(NSRange range) const;

    /// The text with each UTF-8 byte of the characters that are not ASCII, or not in the set, as "%" and two
    /// upper-case hexadecimal digits. None for a text with a lone surrogate.
    Ref<NSString>
    stringByAddingPercentEncodingWithAllowedCharacters(const Ref<NSCharacterSet> &allowed) const;
    /// None when a "%" is not followed by two hexadecimal digits, when the unescaped bytes are not valid
    /// UTF-8, and for a text with a lone surrogate.
    Ref<NSString> stringByRemovingPercentEncoding() const;

    /// The decimal integer at the front: skips members of `whitespaceAndNewlineCharacterSet`, and reads an
    /// optional sign and digits up to the first other character. 0 without digits; clamped to the type.
    std::int32_t intValue() const;
    NSInteger integerValue() const;
    /// The same for a decimal number with fraction and exponent; the decimal point is "." in every locale.
    /// Infinite when too large.
    double doubleValue() const;
    /// True when the text begins with "Y", "y", "T", "t" or a digit from 1 to 9; white space, a sign and
    /// zeros before it are skipped.
    bool boolValue() const;

protected:
    std::u16string units_;

private:
    mutable std::atomic<NSUInteger> hash_{0}; // of an immutable text; 0 until it is first needed
};

class NSMutableString : public NSString {
    NS_CLASS(NSMutableString, NSString)
public:
    using NSString::NSString;

    static Ref<NSMutableString> string() { return make<NSMutableString>(); }

    NSUInteger hash() const override;
    id copy() const override { return make<NSString>(units_); }

    void appendString(const Ref<NSString> &text);
    template <class... Arguments>
    void appendFormat(std::string_view format, const Arguments &...arguments) {
        units_ += formatUTF16(format,
                              std::array<FormatArgument, sizeof...(arguments)>{FormatArgument(arguments)...});
    }
    void setString(const Ref<NSString> &text);
    /// Raises NSRangeException when the range does not fit.
    void replaceCharactersInRange(NSRange range, const Ref<NSString> &text);
    void insertString(const Ref<NSString> &text, NSUInteger index) {
        replaceCharactersInRange({index, 0}, text);
    }
    void deleteCharactersInRange(NSRange range) { replaceCharactersInRange(range, string()); }
};

/// The object's description; "(null)", as for none in a format, when its class returns none.
Ref<NSString> descriptionOf(const NSObject &object);

/// A constant text: `u"deviceUri"_ns`.
inline Ref<NSString> operator""_ns(const char16_t *units, std::size_t length) {
    return make<NSString>(std::u16string(units, length));
}

#pragma GCC visibility pop
