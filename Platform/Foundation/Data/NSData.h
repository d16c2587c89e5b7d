// Byte buffers.
//
// Threads: an NSData is immutable and may be read from any thread. An NSMutableData belongs to one thread at
// a time.
#pragma once

#include "Platform/Foundation/Text/NSRange.h"
#include "Platform/Runtime/Object/NSObject.h"

#include <cstdint>
#include <span>
#include <vector>

#pragma GCC visibility push(default)

class NSData : public NSObject {
    NS_CLASS(NSData, NSObject)
public:
    NSData() = default;
    explicit NSData(std::vector<std::uint8_t> bytes) : bytes_(std::move(bytes)) {}

    static Ref<NSData> data() { return make<NSData>(); }
    /// Copies the bytes; `bytes` may be null when `length` is 0. Raises NSInvalidArgumentException when there
    /// is not enough memory.
    static Ref<NSData> dataWithBytes(const void *bytes, NSUInteger length);
    /// The whole file; none when it cannot be read.
    static Ref<NSData> dataWithContentsOfFile(const std::string &path);

    NSUInteger length() const { return bytes_.size(); }
    /// Valid as long as the object lives and is not changed. May be null when empty.
    const std::uint8_t *bytes() const { return bytes_.data(); }
    std::span<const std::uint8_t> span() const { return bytes_; }
    /// Raises NSRangeException when the range does not fit.
    Ref<NSData> subdataWithRange(NSRange range) const;

    bool isEqual(const id &other) const override;
    NSUInteger hash() const override;
    /// Hexadecimal in groups of four bytes: "<00acff21 00010002>", "<>" when empty.
    Ref<NSString> description() const override;
    id copy() const override { return self(); }
    id mutableCopy() const override;

protected:
    std::vector<std::uint8_t> bytes_;
};

class NSMutableData : public NSData {
    NS_CLASS(NSMutableData, NSData)
public:
    using NSData::NSData;

    /// The capacity, in bytes, is only a hint; any value is fine.
    static Ref<NSMutableData> dataWithCapacity(NSUInteger capacity);
    /// `length` zero bytes. Raises as `setLength` does.
    static Ref<NSMutableData> dataWithLength(NSUInteger length);

    id copy() const override { return make<NSData>(bytes_); }

    std::uint8_t *mutableBytes() { return bytes_.data(); }
    /// Copies the bytes. Raises as `setLength` does.
    void appendBytes(const void *bytes, NSUInteger length);
    /// Does nothing for none.
    void appendData(const Ref<NSData> &data) {
        if (data)
            appendBytes(data->bytes(), data->length());
    }
    /// New bytes are zero. Raises NSInvalidArgumentException when there is not enough memory; the object is
    /// then unchanged.
    void setLength(NSUInteger length);
};

#pragma GCC visibility pop
