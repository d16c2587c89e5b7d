#include "Platform/Foundation/Numbers/NSValue.h"

#include "Platform/Foundation/Data/KeyedHash.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Class.h"
#include "Platform/Runtime/Object/NSException.h"

#include <cstring>
#include <vector>

NS_IMPLEMENTATION(NSValue) {}

namespace {

/// The type that the whole text encodes, if it can be copied as bytes.
std::optional<runtime::EncodedType> plainType(std::string_view encoding) {
    const auto type = runtime::firstType(encoding);
    const bool plain = type && type->length == encoding.size() && type->size > 0;
    return plain && encoding.find('@') == encoding.npos ? type : std::nullopt;
}

class EncodedBytes final : public NSValue {
public:
    EncodedBytes(const void *bytes, std::size_t size, std::string_view type)
        : type_(type),
          bytes_(static_cast<const std::byte *>(bytes), static_cast<const std::byte *>(bytes) + size) {}

    void getValue(void *value, NSUInteger size) const override {
        checkSize(size);
        std::memcpy(value, bytes_.data(), size);
    }
    bool isEqual(const id &other) const override {
        const auto value = as<EncodedBytes>(other);
        return value && value->type_ == type_ && value->bytes_ == bytes_;
    }
    NSUInteger hash() const override { return keyedHash(bytes_.data(), bytes_.size()); }

protected:
    std::string encodedType() const override { return type_; }

private:
    const std::string type_;
    const std::vector<std::byte> bytes_;
};

} // namespace

Ref<NSValue> NSValue::valueWithBytes(const void *bytes, std::string_view objCType) {
    const auto type = plainType(objCType);
    if (!type || !bytes)
        throw NSException(NSInvalidArgumentException,
                          "NSValue: no bytes of type \"" + std::string(objCType) + "\"");
    return make<EncodedBytes>(bytes, type->size, objCType);
}

Ref<NSValue> NSValue::valueWithPointer(const void *pointer) {
    return valueWithBytes(&pointer, "^v");
}

void NSValue::checkSize(NSUInteger size) const {
    const std::string type = encodedType();
    if (size != plainType(type)->size)
        throw NSException(NSInvalidArgumentException,
                          "NSValue: \"" + type + "\" has not " + std::to_string(size) + " bytes");
}

void *NSValue::pointerValue() const {
    const std::string type = encodedType();
    const std::size_t kind = type.find_first_not_of(runtime::typeQualifiers);
    return kind != type.npos && (type[kind] == '^' || type[kind] == '*') ? getValue<void *>() : nullptr;
}

Ref<NSString> NSValue::description() const {
    if (const void *pointer = pointerValue())
        return NSString::stringWithFormat("%p", pointer);
    std::vector<unsigned char> bytes(plainType(encodedType())->size);
    getValue(bytes.data(), bytes.size());
    const auto text = make<NSMutableString>();
    text->appendFormat("{length = %lu, bytes = 0x", bytes.size());
    for (const unsigned char byte : bytes)
        text->appendFormat("%02x", byte);
    text->appendString(u"}"_ns);
    return text;
}
