#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+ModelDescription.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/ModelVisit.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/PropertyValue.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/_QNModelMeta.h"
#include "Platform/Foundation/NSNull.h"
#include "Platform/Foundation/NSSet.h"
#include "Platform/Runtime/NSException.h"

#include <algorithm>

namespace {

using Visit = qn::ModelVisit<struct Description>;
using qn::FoundationKind;
using Text = Ref<NSString>;

constexpr NSUInteger longest = 100;

/// The lines of what is enclosed in braces or brackets.
class Lines {
public:
    explicit Lines(const Ref<NSMutableString> &text) : text_(text) {}

    /// A line after "key = ", or alone without a key.
    void add(const id &key, const Text &value) {
        text_->appendString(first_ ? u"\n    "_ns : u";\n    "_ns);
        first_ = false;
        if (key)
            text_->appendFormat("%@ = ", key);
        text_->appendString(ModelDescriptionAddIndent(make<NSMutableString>(value->units())));
    }
    Text close(const Text &bracket) {
        text_->appendString(u"\n"_ns);
        text_->appendString(bracket);
        return as<NSString>(text_->copy());
    }

private:
    const Ref<NSMutableString> text_;
    bool first_ = true;
};

Text cut(const Text &text) {
    if (text->length() <= longest)
        return text;
    return text->substringToIndex(longest)->stringByAppendingString(u"..."_ns);
}

Text describeDictionary(const NSDictionary &dictionary) {
    if (dictionary.count() == 0)
        return u"{}"_ns;
    Lines lines(make<NSMutableString>(u"{"));
    for (const id &key : dictionary.allKeys())
        lines.add(key, ModelDescription(dictionary.objectForKey(key)));
    return lines.close(u"}"_ns);
}

Text describeArray(const NSArray &array) {
    const auto elements = array.allObjects();
    if (elements.empty())
        return u"[]"_ns;
    Lines lines(make<NSMutableString>(u"["));
    for (const id &element : elements)
        lines.add(nullptr, ModelDescription(element));
    return lines.close(u"]"_ns);
}

Text pointerText(const void *pointer) {
    return NSString::stringWithFormat("%p", pointer);
}

/// A property of computed bytes may have a getter of a name of its own and no variable.
Text structureText(const NSObject &model, const _QNModelPropertyMeta &meta) {
    try {
        if (const id value = model.valueForKey(meta._name))
            return value->description();
    } catch (const NSException &) {
    }
    return u"{unknown}"_ns;
}

Text describeProperty(NSObject &model, const _QNModelPropertyMeta &meta) {
    if (meta._isCNumber)
        return qn::numberOfProperty(model, meta)->stringValue();
    switch (meta.valueType()) {
    case QNEncodingTypeObject:
        return ModelDescription(meta.get<id>(model));
    case QNEncodingTypeClass: {
        const Class cls = meta.get<Class>(model);
        return cls ? cls->description() : u"<nil>"_ns;
    }
    case QNEncodingTypeSEL: {
        const SEL selector = meta.get<SEL>(model);
        return selector ? NSString::stringWithUTF8String(sel_getName(selector)) : u"<NULL>"_ns;
    }
    case QNEncodingTypeBlock: {
        const id block = meta.get<id>(model);
        return block ? block->description() : u"<nil>"_ns;
    }
    case QNEncodingTypePointer:
    case QNEncodingTypeCString:
    case QNEncodingTypeCArray:
        return pointerText(meta.get<void *>(model));
    case QNEncodingTypeStruct:
    case QNEncodingTypeUnion:
        return structureText(model, meta);
    default:
        return u"<unknown>"_ns;
    }
}

Text head(NSObject &object) {
    return NSString::stringWithFormat("<%@: %p>", object.isa(), static_cast<const void *>(&object));
}

Text describeModel(NSObject &model, const _QNModelMeta &meta) {
    std::vector<const _QNModelPropertyMeta *> properties;
    for (const id &property : meta._allPropertyMetas)
        properties.push_back(static_cast<const _QNModelPropertyMeta *>(property.get()));
    if (properties.empty())
        return head(model);
    std::ranges::sort(properties, {}, [](const auto *property) { return property->_name->units(); });
    const auto text = as<NSMutableString>(head(model)->mutableCopy());
    text->appendString(u" {"_ns);
    Lines lines(text);
    for (const auto *property : properties)
        lines.add(property->_name, describeProperty(model, *property));
    return lines.close(u"}"_ns);
}

Text describeOfKind(FoundationKind kind, const id &object) {
    switch (kind) {
    case FoundationKind::String:
    case FoundationKind::MutableString:
        return NSString::stringWithFormat("\"%@\"", object);
    case FoundationKind::Value:
    case FoundationKind::Data:
    case FoundationKind::MutableData:
        return cut(object->description());
    case FoundationKind::Array:
    case FoundationKind::MutableArray:
        return describeArray(static_cast<const NSArray &>(*object));
    case FoundationKind::Dictionary:
    case FoundationKind::MutableDictionary:
        return describeDictionary(static_cast<const NSDictionary &>(*object));
    case FoundationKind::Set:
    case FoundationKind::MutableSet:
        return describeArray(*static_cast<const NSSet &>(*object).allObjects());
    default:
        return object->description();
    }
}

} // namespace

Ref<NSString> ModelDescription(const id &object) {
    if (!object)
        return u"<nil>"_ns;
    if (peek<NSNull>(object))
        return u"<null>"_ns;
    if (!Visit::admits(*object))
        return head(*object);
    const Visit visit(*object);
    const auto meta = _QNModelMeta::metaWithClass(object->isa());
    return meta->_nsType == FoundationKind::None ? describeModel(*object, *meta)
                                                 : describeOfKind(meta->_nsType, object);
}

Ref<NSMutableString> ModelDescriptionAddIndent(const Ref<NSMutableString> &text) {
    if (!text)
        return nullptr;
    std::u16string indented;
    for (const char16_t unit : text->units()) {
        indented += unit;
        if (unit == u'\n')
            indented += u"    ";
    }
    text->setString(make<NSString>(std::move(indented)));
    return text;
}

Ref<NSString> qn::modelDescription(const id &model) {
    return model ? ModelDescription(model) : nullptr;
}
