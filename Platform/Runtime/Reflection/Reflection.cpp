#include "Platform/Runtime/Reflection/Reflection.h"

using runtime::typeAt;

std::vector<Method> class_copyMethodList(Class cls) {
    return cls ? cls->methods() : std::vector<Method>();
}
std::vector<objc_property_t> class_copyPropertyList(Class cls) {
    return cls ? cls->properties() : std::vector<objc_property_t>();
}
std::vector<Ivar> class_copyIvarList(Class cls) {
    return cls ? cls->ivars() : std::vector<Ivar>();
}

Class class_getSuperclass(Class cls) {
    return cls ? cls->superclass() : nullptr;
}
bool class_isMetaClass(Class cls) {
    return cls && cls->isMetaClass();
}
const char *class_getName(Class cls) {
    return cls ? cls->name().c_str() : "nil";
}
bool class_conformsToProtocol(Class cls, std::string_view protocol) {
    return cls && cls->conformsToProtocol(protocol);
}
Class objc_getMetaClass(std::string_view name) {
    const Class cls = objc_getClass(name);
    return cls ? cls->metaClass() : nullptr;
}

const char *ivar_getName(Ivar ivar) {
    return ivar ? ivar->name.c_str() : nullptr;
}
std::ptrdiff_t ivar_getOffset(Ivar ivar) {
    return ivar ? ivar->offset : 0;
}
const char *ivar_getTypeEncoding(Ivar ivar) {
    return ivar ? ivar->types.c_str() : nullptr;
}

SEL method_getName(Method method) {
    return method ? method->name : nullptr;
}
IMP method_getImplementation(Method method) {
    return method ? method->imp : nullptr;
}
const char *method_getTypeEncoding(Method method) {
    return method ? method->types.c_str() : nullptr;
}
std::string method_copyReturnType(Method method) {
    return method ? std::string(typeAt(method->types, 0)) : "";
}
unsigned method_getNumberOfArguments(Method method) {
    unsigned count = 0;
    while (method && !typeAt(method->types, count + 1u).empty())
        ++count;
    return count;
}
std::string method_copyArgumentType(Method method, unsigned index) {
    return method ? std::string(typeAt(method->types, std::size_t{index} + 1)) : "";
}

const char *property_getName(objc_property_t property) {
    return property ? property->name.c_str() : nullptr;
}
std::vector<objc_property_attribute_t> property_copyAttributeList(objc_property_t property) {
    return property ? property->attributes : std::vector<objc_property_attribute_t>();
}

bool class_addProperty(Class cls, std::string_view name, std::vector<objc_property_attribute_t> attributes) {
    return cls && !name.empty() && cls->addProperty({std::string(name), std::move(attributes)});
}
