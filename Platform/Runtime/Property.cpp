#include "Platform/Runtime/Property.h"

#include "Platform/Runtime/Class.h"
#include "Platform/Runtime/NSException.h"

#include <algorithm>

namespace {

using Attributes = std::vector<objc_property_attribute_t>;

/// The runtime's order.
constexpr std::string_view order = "TRC&WDNGSV";

Attributes parsed(std::string_view text) {
    Attributes attributes;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(','), text.size());
        if (end == 0 || order.substr(1).find(text.front()) == order.npos)
            throw NSException(NSInvalidArgumentException,
                              "unknown property attribute in \"" + std::string(text) + "\"");
        attributes.push_back({std::string(text.substr(0, 1)), std::string(text.substr(1, end - 1))});
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return attributes;
}

const std::string *find(const Attributes &attributes, std::string_view name) {
    const auto found = std::ranges::find(attributes, name, &objc_property_attribute_t::name);
    return found == attributes.end() ? nullptr : &found->value;
}

Attributes complete(const runtime::Declaration &declaration, Attributes attributes, const std::string &name) {
    const auto has = [&](std::string_view letter) { return find(attributes, letter) != nullptr; };
    const auto add = [&](const char *letter, std::string value = "") {
        attributes.push_back({letter, std::move(value)});
    };
    if (!has("R") && !has("D") && !declaration.set)
        add("R");
    if (declaration.isWeak && !has("W"))
        add("W");
    if (declaration.isObject && !has("R") && !has("C") && !has("W") && !has("&"))
        add("&");
    if (declaration.offset && !has("D") && !has("V"))
        add("V", "_" + name);
    add("T", declaration.type);
    std::ranges::stable_sort(attributes, {}, [](const auto &each) { return order.find(each.name); });
    return attributes;
}

void addAccessor(Class cls, objc_method accessor, const std::string &selector) {
    accessor.name = sel_registerName(selector);
    cls->addMethod(std::move(accessor));
}

} // namespace

std::string runtime::objectEncoding(const char *className, Protocols protocols) {
    std::string text = std::string_view(className) == NSObject::declaredName ? "" : className;
    for (const char *protocol : protocols)
        text.append("<").append(protocol).append(">");
    return text.empty() ? "@" : "@\"" + text + "\"";
}

void runtime::declareIvar(Class cls, const Declaration &declaration, const std::string &name) {
    cls->addIvar({name, declaration.type, *declaration.offset, *declaration.get, *declaration.set});
}

void runtime::declareProperty(Class cls, Declaration declaration, const std::string &name,
                              std::string_view attributeText) {
    const Attributes attributes = complete(declaration, parsed(attributeText), name);
    if (!find(attributes, "D")) {
        if (const std::string *variable = find(attributes, "V"); variable && declaration.offset)
            declareIvar(cls, declaration, *variable);
        const std::string *getter = find(attributes, "G");
        if (declaration.get)
            addAccessor(cls, *declaration.get, getter ? *getter : name);
        const std::string *setter = find(attributes, "S");
        if (declaration.set && !find(attributes, "R"))
            addAccessor(cls, find(attributes, "C") ? *declaration.setCopy : *declaration.set,
                        setter ? *setter : setterName(name));
    }
    cls->addProperty({name, attributes});
}
