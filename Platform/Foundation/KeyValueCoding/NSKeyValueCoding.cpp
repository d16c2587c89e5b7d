#include "Platform/Foundation/KeyValueCoding/NSKeyValueCoding.h"

#include "Platform/Ascii/Ascii.h"
#include "Platform/Foundation/Collections/NSArray.h" // IWYU pragma: keep: it is the complete type
#include "Platform/Foundation/KeyValueCoding/BoxedValue.h"
#include "Platform/Runtime/Object/NSException.h"
#include "Platform/Runtime/Reflection/Reflection.h"

namespace {

/// "Title" for "title": the first user-perceived character in upper case.
std::string capitalized(std::string_view name) {
    const auto isPlain = [](char byte) { return static_cast<unsigned char>(byte) < 0x80; };
    if (!name.empty() && ascii::isLowerCase(name[0]) && (name.size() == 1 || isPlain(name[1])))
        return ascii::upperCase(name[0]) + std::string(name.substr(1));
    const auto text = NSString::stringWithUTF8String(name);
    if (!text || text->length() == 0)
        return std::string(name);
    const NSRange first = text->rangeOfComposedCharacterSequencesForRange({0, 1});
    return text->substringWithRange(first)->uppercaseString()->utf8() +
           text->substringFromIndex(first.end())->utf8();
}

[[noreturn]] void raise(const char *exception, const NSObject &object, const char *operation,
                        const Ref<NSString> &key, const char *reason) {
    throw NSException(exception, "-[" + object.isa()->name() + " " + operation + "]: " + reason + " \"" +
                                     (key ? key->utf8() : "(null)") + "\"");
}

id read(const objc_method &getter, NSObject *object, SEL selector) {
    BoxedValue value(runtime::typeAt(getter.types, 0));
    getter.invoke(getter.imp, object, selector, nullptr, value.result());
    return value.object();
}

/// False when the object does not fit the type.
bool write(const objc_method &setter, NSObject *object, SEL selector, const id &value) {
    BoxedValue boxed(runtime::typeAt(setter.types, 3));
    if (!boxed.set(value))
        return false;
    const void *const argument = boxed.argument();
    setter.invoke(setter.imp, object, selector, &argument, nullptr);
    return true;
}

/// A method that takes `arguments` besides the receiver and the selector.
Method methodNamed(Class cls, const std::string &name, unsigned arguments) {
    const SEL selector = runtime::findSelector(name);
    const Method method = selector ? cls->findMethod(selector) : nullptr;
    const bool fits = method && method_getNumberOfArguments(method) == arguments + 2 &&
                      (method_copyReturnType(method) == "v") == (arguments == 1);
    return fits ? method : nullptr;
}

Ivar ivarOf(const NSObject &object, const std::string &key, const std::string &capital) {
    for (const std::string &name : {"_" + key, "_is" + capital, key, "is" + capital})
        if (const Ivar ivar = object.isa()->findIvar(name))
            return ivar;
    return nullptr;
}

} // namespace

std::string runtime::setterName(std::string_view property) {
    return "set" + capitalized(property) + ":";
}

Method runtime::keyValueReader(Class cls, const std::string &key) {
    const std::string capital = capitalized(key);
    for (const std::string &name : {"get" + capital, key, "is" + capital, "_" + key})
        if (const Method getter = methodNamed(cls, name, 0))
            return getter;
    return nullptr;
}

id NSObject::valueForKey(const Ref<NSString> &forKey) const {
    auto *object = const_cast<NSObject *>(this);
    const std::string key = forKey ? forKey->utf8() : "", capital = capitalized(key);
    if (const Method getter = runtime::keyValueReader(isa(), key))
        return read(*getter, object, getter->name);
    if (const Ivar ivar = ivarOf(*this, key, capital))
        return read(ivar->load, object, nullptr);
    raise(NSUnknownKeyException, *this, "valueForKey:", forKey, "there is no value for the key");
}

void NSObject::setValue(const id &value, const Ref<NSString> &forKey) {
    const std::string key = forKey ? forKey->utf8() : "", capital = capitalized(key);
    bool fits = false;
    const Class cls = isa();
    if (Method setter = methodNamed(cls, "set" + capital + ":", 1);
        setter || (setter = methodNamed(cls, "_set" + capital + ":", 1)))
        fits = write(*setter, this, setter->name, value);
    else if (const Ivar ivar = ivarOf(*this, key, capital))
        fits = write(ivar->store, this, nullptr, value);
    else
        raise(NSUnknownKeyException, *this, "setValue:forKey:", forKey, "there is no value for the key");
    if (!fits)
        raise(NSInvalidArgumentException, *this, "setValue:forKey:", forKey,
              value ? "an object of this kind does not fit the key" : "none does not fit the key");
}

id valueForKeyPath(const id &object, const Ref<NSString> &keyPath) {
    if (!keyPath)
        return nullptr;
    id value = object;
    const auto keys = keyPath->componentsSeparatedByString(u"."_ns);
    for (const id &key : *keys)
        value = value ? value->valueForKey(as<NSString>(key)) : nullptr;
    return value;
}
