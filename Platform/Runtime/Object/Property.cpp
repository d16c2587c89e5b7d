#include "Platform/Runtime/Object/Property.h"

#include "Platform/Runtime/Object/Class.h"
#include "Platform/Runtime/Object/NSException.h"

#include <algorithm>
#include <set>

namespace {

using Attributes = std::vector<objc_property_attribute_t>;

/// The runtime's order.
constexpr std::string_view order = "TRC&WDNGSV";

[[noreturn]] void refuse(Class cls, const std::string &property, const std::string &reason) {
    throw NSException(NSInvalidArgumentException,
                      "class " + cls->name() + ", property \"" + property + "\": " + reason);
}

const std::string *find(const Attributes &attributes, std::string_view name) {
    const auto found = std::ranges::find(attributes, name, &objc_property_attribute_t::name);
    return found == attributes.end() ? nullptr : &found->value;
}

/// The attributes of one property, each at most once and none without a meaning.
class AttributeReader {
public:
    AttributeReader(Class cls, const std::string &property, const runtime::Declaration &declaration)
        : cls_(cls), property_(property), declaration_(declaration) {}

    Attributes read(std::string_view text) {
        while (!text.empty()) {
            const std::size_t end = std::min(text.find(','), text.size());
            add(text.substr(0, end), text);
            text.remove_prefix(std::min(end + 1, text.size()));
        }
        refuseContradictions();
        return std::move(attributes_);
    }

private:
    bool has(std::string_view letter) const { return find(attributes_, letter) != nullptr; }
    [[noreturn]] void refuse(const std::string &reason) const { ::refuse(cls_, property_, reason); }

    void add(std::string_view attribute, std::string_view rest) {
        const std::string_view letter = attribute.substr(0, 1), value = attribute.substr(letter.size());
        if (letter.empty() || order.substr(1).find(letter) == order.npos)
            refuse("unknown property attribute in \"" + std::string(rest) + "\"");
        if (has(letter))
            refuse("the attribute " + std::string(letter) + " is given twice");
        const bool isNamed = letter == "G" || letter == "S" || letter == "V";
        const std::size_t colon = value.find(':');
        if (isNamed ? value.empty() || colon != (letter == "S" ? value.size() - 1 : value.npos)
                    : !value.empty())
            refuse("the attribute \"" + std::string(attribute) + "\" is malformed");
        attributes_.push_back({std::string(letter), std::string(value)});
    }

    void refuseContradictions() const {
        const int ownerships = has("C") + has("&") + has("W");
        if (ownerships > 1)
            refuse("of the attributes C, & and W only one can hold");
        if (ownerships > 0 && !declaration_.isObject)
            refuse("the attributes C, & and W are of objects");
        if (declaration_.offset && ownerships > 0 && has("W") != declaration_.isWeak)
            refuse("the attribute W and a weak variable go together");
        if (has("R") && (has("S") || (declaration_.set && !declaration_.offset)))
            refuse("it is read-only and has a setter");
    }

    const Class cls_;
    const std::string &property_;
    const runtime::Declaration &declaration_;
    Attributes attributes_;
};

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

std::string getterOf(const objc_property &property) {
    const std::string *name = find(property.attributes, "G");
    return name ? *name : property.name;
}

std::string setterOf(const objc_property &property) {
    const std::string *name = find(property.attributes, "S");
    return name ? *name : runtime::setterName(property.name);
}

/// Whether the name can stand in an encoding.
bool isProtocolName(std::string_view name) {
    return !name.empty() && name.find_first_of("<>\"") == name.npos;
}

void addAccessor(Class cls, const std::string &property, objc_method accessor, const std::string &selector) {
    accessor.name = sel_registerName(selector);
    if (!cls->declareMethod(std::move(accessor)))
        refuse(cls, property, "the class has another " + selector);
}

/// The encoding without its qualifiers and, since objects of all classes are passed alike, without a class.
std::string_view comparable(std::string_view encoding) {
    encoding.remove_prefix(std::min(encoding.find_first_not_of(runtime::typeQualifiers), encoding.size()));
    return encoding.starts_with('@') ? "@" : encoding;
}

/// Whether the method is a getter (takes nothing, returns the type) or a setter (takes it, returns nothing).
bool isAccessor(Method method, std::string_view type, bool isSetter) {
    const auto part = [&](std::size_t index) { return runtime::typeAt(method->types, index); };
    const std::size_t parts = isSetter ? 4 : 3; // the result, the receiver, the selector and what is set
    const std::string_view result = part(0), argument = part(3);
    return !part(parts - 1).empty() && part(parts).empty() &&
           (isSetter ? result == "v" && comparable(argument) == comparable(type)
                     : comparable(result) == comparable(type));
}

void checkAccessor(Class cls, const objc_property &property, const std::string &selector, bool isSetter) {
    const Method method = cls->findMethod(sel_registerName(selector));
    const std::string &type = *find(property.attributes, "T");
    if (method && !isAccessor(method, type, isSetter))
        refuse(cls, property.name,
               selector + " is no accessor of the type " + type + ", its types are " + method->types);
}

} // namespace

std::string runtime::objectEncoding(const char *className, Protocols protocols) {
    std::string text = std::string_view(className) == NSObject::declaredName ? "" : className;
    for (const char *protocol : protocols)
        text.append("<").append(protocol).append(">");
    return text.empty() ? "@" : "@\"" + text + "\"";
}

void runtime::declareIvar(Class cls, const Declaration &declaration, const std::string &name) {
    if (!cls->addIvar({name, declaration.type, *declaration.offset, *declaration.get, *declaration.set}))
        throw NSException(NSInvalidArgumentException,
                          "class " + cls->name() + ": the instance variable " + name + " is declared twice");
}

void runtime::declareMethod(Class cls, objc_method method, const char *selector) {
    method.name = sel_registerName(selector);
    if (!cls->declareMethod(std::move(method)))
        throw NSException(NSInvalidArgumentException,
                          "class " + cls->name() + ": the operation " + selector + " is declared twice");
}

void runtime::declareProtocol(Class cls, std::string_view name) {
    if (!isProtocolName(name))
        throw NSException(NSInvalidArgumentException, "class " + cls->name() + ": the protocol's name \"" +
                                                          std::string(name) + "\" is malformed");
    if (!cls->addProtocol(name))
        throw NSException(NSInvalidArgumentException, "class " + cls->name() + ": the protocol " +
                                                          std::string(name) + " is declared twice");
}

void runtime::declareProperty(Class cls, Declaration declaration, const std::string &name,
                              std::string_view attributeText) {
    if (name.empty())
        refuse(cls, name, "it has no name");
    if (declaration.elementClass && !declaration.mayHoldObjects)
        refuse(cls, name, "only collections have elements");
    if (declaration.protocols.size() > 0 && (!declaration.isObject || declaration.type == "@?"))
        refuse(cls, name, "only objects of a class have protocols");
    if (!std::ranges::all_of(declaration.protocols, isProtocolName))
        refuse(cls, name, "a protocol's name is malformed");
    const objc_property property{
        name, complete(declaration, AttributeReader(cls, name, declaration).read(attributeText), name),
        declaration.cls, declaration.elementClass};
    const Attributes &attributes = property.attributes;
    if (!cls->addProperty(property))
        refuse(cls, name, "it is declared twice");
    if (find(attributes, "D"))
        return;
    if (const std::string *variable = find(attributes, "V"); variable && declaration.offset)
        declareIvar(cls, declaration, *variable);
    if (declaration.get)
        addAccessor(cls, name, *declaration.get, getterOf(property));
    if (declaration.set && !find(attributes, "R"))
        addAccessor(cls, name, find(attributes, "C") ? *declaration.setCopy : *declaration.set,
                    setterOf(property));
}

void runtime::declareKeys(Class cls, const std::string &property, std::vector<std::string> keys) {
    if (std::ranges::any_of(keys, &std::string::empty))
        refuse(cls, property, "a key is empty");
    if (!cls->setPropertyKeys(property, std::move(keys)))
        refuse(cls, property,
               property.empty() ? "a key has to follow its property" : "it has its keys twice");
}

void runtime::checkAccessors(Class cls) {
    std::set<std::string> seen; // a property hides those of its name in superclasses
    for (Class each = cls; each; each = each->superclass())
        for (const objc_property_t property : each->properties())
            if (seen.insert(property->name).second && find(property->attributes, "T")) {
                checkAccessor(cls, *property, getterOf(*property), false);
                if (!find(property->attributes, "R"))
                    checkAccessor(cls, *property, setterOf(*property), true);
            }
}
