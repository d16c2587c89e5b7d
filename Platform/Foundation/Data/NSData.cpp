#include "Platform/Foundation/Data/NSData.h"

#include "Platform/Ascii/HexDigit.h"
#include "Platform/Foundation/Data/CapacityHint.h"
#include "Platform/Foundation/Data/KeyedHash.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Class.h"
#include "Platform/Runtime/Object/NSException.h"

#include <algorithm>
#include <fstream>
#include <functional>
#include <new>

NS_IMPLEMENTATION(NSData) {
    cls.method<&NSData::length>("length");
}

NS_IMPLEMENTATION(NSMutableData) {}

namespace {

/// Runs the allocation; raises NSInvalidArgumentException when there is no memory for that many bytes.
template <class Allocation>
auto allocate(const char *operation, NSUInteger length, Allocation &&allocation) {
    runtime::checkCount(operation, length);
    try {
        return allocation();
    } catch (const std::bad_alloc &) {
        throw NSException(NSInvalidArgumentException, "-[" + std::string(operation) + "]: no memory for " +
                                                          std::to_string(length) + " bytes");
    }
}

} // namespace

Ref<NSData> NSData::dataWithBytes(const void *bytes, NSUInteger length) {
    const auto *first = static_cast<const std::uint8_t *>(bytes);
    return allocate("NSData initWithBytes:length:", length, [&] {
        return length ? make<NSData>(std::vector<std::uint8_t>(first, first + length)) : data();
    });
}

Ref<NSData> NSData::dataWithContentsOfFile(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    std::vector<std::uint8_t> bytes;
    for (char block[4096]; file; bytes.insert(bytes.end(), block, block + file.gcount()))
        file.read(block, sizeof block);
    return file.eof() ? make<NSData>(std::move(bytes)) : nullptr;
}

Ref<NSData> NSData::subdataWithRange(NSRange range) const {
    runtime::checkRange("NSData subdataWithRange:", range, length());
    return dataWithBytes(bytes() + range.location, range.length);
}

bool NSData::isEqual(const id &other) const {
    const auto data = as<NSData>(other);
    return data && data->bytes_ == bytes_;
}

NSUInteger NSData::hash() const {
    return keyedHash(bytes(), bytes_.size());
}

Ref<NSString> NSData::description() const {
    std::u16string text = u"<";
    text.reserve(bytes_.size() * 9 / 4 + 3);
    for (std::size_t i = 0; i < bytes_.size(); ++i) {
        if (i && i % 4 == 0)
            text += u' ';
        text += ascii::lowerHexDigit<char16_t>(bytes_[i] >> 4);
        text += ascii::lowerHexDigit<char16_t>(bytes_[i]);
    }
    return make<NSString>(text + u">");
}

id NSData::mutableCopy() const {
    return make<NSMutableData>(bytes_);
}

Ref<NSMutableData> NSMutableData::dataWithCapacity(NSUInteger capacity) {
    auto data = make<NSMutableData>();
    data->bytes_.reserve(reservedFor(capacity));
    return data;
}

Ref<NSMutableData> NSMutableData::dataWithLength(NSUInteger length) {
    auto data = make<NSMutableData>();
    data->setLength(length);
    return data;
}

void NSMutableData::setLength(NSUInteger length) {
    allocate("NSMutableData setLength:", length, [&] { bytes_.resize(length); });
}

void NSMutableData::appendBytes(const void *bytes, NSUInteger length) {
    const auto *first = static_cast<const std::uint8_t *>(bytes);
    const std::less<> isBefore;
    const bool isOwn = !isBefore(first, bytes_.data()) && isBefore(first, bytes_.data() + bytes_.size());
    const std::ptrdiff_t place = isOwn ? first - bytes_.data() : 0; // own bytes move when there is no room
    allocate("NSMutableData appendBytes:length:", length, [&] { bytes_.resize(bytes_.size() + length); });
    std::copy_n(isOwn ? bytes_.data() + place : first, length,
                bytes_.end() - static_cast<std::ptrdiff_t>(length));
}
