// Locations of resources. Immutable; any thread.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

class NSURL : public NSObject {
    NS_CLASS(NSURL, NSObject)
public:
    /// Returns none if the argument is none or no URL, be it absolute or relative: with a character that no
    /// URL may hold as it is, such as a blank, with a "%" that two hexadecimal digits do not follow, with a
    /// scheme that does not begin with a letter, with a port that is no number, with brackets but around the
    /// host's address.
    static Ref<NSURL> URLWithString(const Ref<NSString> &text);
    /// A relative path is taken from the current folder. Returns none if the argument is none, empty or
    /// no valid text.
    static Ref<NSURL> fileURLWithPath(const Ref<NSString> &path);

    /// For the two above. Raises NSInvalidArgumentException for none.
    explicit NSURL(Ref<NSString> text);

    Ref<NSString> absoluteString() const { return text_; }
    /// What stands before the first colon in lower case; none when nothing does.
    Ref<NSString> scheme() const;
    bool isFileURL() const;
    /// What stands between the host and the query, with percent escapes resolved; none when that fails.
    Ref<NSString> path() const;

    bool isEqual(const id &other) const override;
    NSUInteger hash() const override;
    Ref<NSString> description() const override { return text_; }
    id copy() const override { return self(); }

private:
    const Ref<NSString> text_;
};
