// URLs. Immutable, so any thread may use one.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#pragma GCC visibility push(default)

class NSURL : public NSObject {
    NS_CLASS(NSURL, NSObject)
public:
    /// An absolute or relative URL; none unless the text is a valid one by RFC 3986. It must not contain
    /// characters that need an escape, such as a blank, or a "%" without two hexadecimal digits behind it;
    /// the scheme must begin with a letter, the port must be a number, and brackets may only enclose an
    /// address.
    static Ref<NSURL> URLWithString(const Ref<NSString> &text);
    /// The URL of a file; a relative path is resolved against the current folder. None when the path is none,
    /// empty or contains a lone surrogate.
    static Ref<NSURL> fileURLWithPath(const Ref<NSString> &path);

    /// For the two functions above: `text` must be a valid URL. Raises NSInvalidArgumentException for none.
    explicit NSURL(Ref<NSString> text);

    /// The text of the URL as it was given.
    Ref<NSString> absoluteString() const { return text_; }
    /// In lower case; none for a relative URL.
    Ref<NSString> scheme() const;
    bool isFileURL() const;
    /// The path without percent escapes; none when they do not make valid UTF-8.
    Ref<NSString> path() const;

    /// By the texts.
    bool isEqual(const id &other) const override;
    NSUInteger hash() const override;
    Ref<NSString> description() const override { return text_; }
    id copy() const override { return self(); }

private:
    const Ref<NSString> text_;
};

#pragma GCC visibility pop
