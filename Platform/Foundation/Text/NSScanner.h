// Reads values from the front of a text, one after another. White space and line ends before a value are
// skipped. A scanner belongs to one thread at a time.
//
//     auto scanner = make<NSScanner>(u" 0x1F rest"_ns);
//     scanner->scanHexInt();    // 31
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <optional>

#pragma GCC visibility push(default)

class NSScanner : public NSObject {
    NS_CLASS(NSScanner, NSObject)
public:
    /// `text` must not be none.
    explicit NSScanner(Ref<NSString> text) : text_(std::move(text)) {}

    /// The index of the code unit where the next value is looked for.
    NSUInteger scanLocation() const { return location_; }

    /// An unsigned hexadecimal number, with or without "0x" in front; 0xFFFFFFFF when it does not fit into 32
    /// bits. Nothing when there is no digit, or none after "0x"; the location then stays.
    std::optional<std::uint32_t> scanHexInt();

private:
    const Ref<NSString> text_;
    NSUInteger location_ = 0;
};

#pragma GCC visibility pop
