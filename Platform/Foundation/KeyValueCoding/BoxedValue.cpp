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

BoxedValue::BoxedValue(std::string_view encoding) : encoding_(encoding), kind_(kindOf(encoding)) {
    if (const std::size_t size = isObject() ? 0 : sizeOf(encoding); size > sizeof small_)
        large_ = std::make_unique<std::max_align_t[]>(size / sizeof(std::max_align_t) + 1);
}

template <class T>
T &BoxedValue::as() {
    return *static_cast<T *>(bytes());
}

template <class T>
const T &BoxedValue::as() const {
    return *static_cast<const T *>(bytes());
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
    value->getValue(bytes(), sizeOf(encoding_));
    return true;
}

const void *BoxedValue::argument() {
    if (isObject())
        return &object_;
    first_ = bytes();
    return kind_ == '[' ? &first_ : first_;
}

void *BoxedValue::result() {
    return isObject() ? &object_ : bytes();
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
        return NSValue::valueWithBytes(bytes(), encoding_);
    }
}
