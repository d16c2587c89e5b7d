#include "Platform/Foundation/KeyValueCoding/BoxedValue.h"

#include "Platform/Foundation/Numbers/NSNumber.h"
#include "Platform/Runtime/Object/Class.h"
#include "Platform/Runtime/Object/NumberType.h"

namespace {

char kindOf(std::string_view encoding) {
    const std::size_t kind = encoding.find_first_not_of(runtime::typeQualifiers);
    return kind == encoding.npos ? '\0' : encoding[kind];
}

bool isNumber(char kind) {
    return kind != '\0' && runtime::numberEncodings.find(kind) != std::string_view::npos;
}

std::size_t sizeOf(std::string_view encoding) {
    const auto type = runtime::firstType(encoding);
    return type ? type->size : 0;
}

} // namespace

BoxedValue::BoxedValue(std::string encoding) : encoding_(std::move(encoding)), kind_(kindOf(encoding_)) {
    if (!isObject())
        bytes_.resize(sizeOf(encoding_) / sizeof(std::max_align_t) + 1);
}

template <class T>
T &BoxedValue::as() {
    return *reinterpret_cast<T *>(bytes_.data());
}

template <class T>
const T &BoxedValue::as() const {
    return *reinterpret_cast<const T *>(bytes_.data());
}

bool BoxedValue::set(const id &object) {
    if (isObject()) {
        object_ = object;
        return true;
    }
    if (kind_ == '#') {
        const auto cls = ::as<objc_class>(object);
        as<Class>() = cls.get();
        return cls || !object;
    }
    if (const auto *number = peek<NSNumber>(object); number && isNumber(kind_)) {
        runtime::withNumberType(kind_, [&]<class T>() { as<T>() = number->valueAs<T>(); });
        return true;
    }
    const auto *value = peek<NSValue>(object);
    if (!value || value->objCType() != encoding_)
        return false;
    value->getValue(bytes_.data(), sizeOf(encoding_));
    return true;
}

const void *BoxedValue::argument() {
    if (isObject())
        return &object_;
    first_ = bytes_.data();
    return kind_ == '[' ? static_cast<const void *>(&first_) : bytes_.data();
}

void *BoxedValue::result() {
    return isObject() ? static_cast<void *>(&object_) : bytes_.data();
}

id BoxedValue::object() const {
    if (isNumber(kind_))
        return runtime::withNumberType(kind_, [&]<class T>() -> id { return NSNumber::numberWith(as<T>()); });
    switch (kind_) {
    case '@':
        return object_;
    case 'v':
        return nullptr;
    case '#':
        return as<Class>() ? as<Class>()->self() : nullptr;
    case '[':
        return NSValue::valueWithBytes(as<void *>(), encoding_);
    default:
        return NSValue::valueWithBytes(bytes_.data(), encoding_);
    }
}
