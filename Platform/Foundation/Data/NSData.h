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

class NSData : public NSObject {
    NS_CLASS(NSData, NSObject)
public:
    NSData() = default;
    explicit NSData(std::vector<std::uint8_t> bytes) : bytes_(std::move(bytes)) {}

    static Ref<NSData> data() { return make<NSData>(); }
    /// Copies the bytes; `bytes` may be null when `length` is 0. Raises NSInvalidArgumentException for a
    /// length that there is no memory for.
    static Ref<NSData> dataWithBytes(const void *bytes, NSUInteger length);
    /// The whole file; none when it cannot be read.
    static Ref<NSData> dataWithContentsOfFile(const std::string &path);

    NSUInteger length() const { return bytes_.size(); }
    /// Null or dangling when empty. Valid as long as the object lives and is not changed.
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

    /// The capacity is a hint, whatever it is.
    static Ref<NSMutableData> dataWithCapacity(NSUInteger capacity);
    /// Zero bytes. Raises as `setLength` does.
    static Ref<NSMutableData> dataWithLength(NSUInteger length);

    id copy() const override { return make<NSData>(bytes_); }

    std::uint8_t *mutableBytes() { return bytes_.data(); }
    /// Raises as `setLength` does.
    void appendBytes(const void *bytes, NSUInteger length);
    /// None adds nothing.
    void appendData(const Ref<NSData> &data) {
        if (data)
            appendBytes(data->bytes(), data->length());
    }
    /// New bytes are zero. Raises NSInvalidArgumentException for a length that there is no memory for, and
    /// changes nothing.
    void setLength(NSUInteger length);
};
