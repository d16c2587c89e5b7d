// Reads values off the front of a text, one after another. White space and line ends before a value are
// skipped. One thread at a time.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <optional>

class NSScanner : public NSObject {
    NS_CLASS(NSScanner, NSObject)
public:
    explicit NSScanner(Ref<NSString> text) : text_(std::move(text)) {}

    /// Where the next value is looked for, in code units.
    NSUInteger scanLocation() const { return location_; }

    /// A hexadecimal number without sign, with or without "0x" in front; 0xFFFFFFFF when it does not fit into
    /// 32 bits. Nothing, and the location stays, when there is no digit.
    std::optional<std::uint32_t> scanHexInt();

private:
    const Ref<NSString> text_;
    NSUInteger location_ = 0;
};
