#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+ModelDescription.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/_QNModelMeta.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Values/PropertyValue.h"
#include "Platform/Foundation/Collections/CollectionDescription.h"
#include "Platform/Foundation/Collections/NSNull.h"
#include "Platform/Foundation/Collections/NSSet.h"
#include "Platform/Foundation/Collections/ObjectVisit.h"
#include "Platform/Runtime/Object/NSException.h"

#include <algorithm>

namespace {

using Visit = ObjectVisit<struct Description>;
using qn::FoundationKind;
using Text = Ref<NSString>;

constexpr NSUInteger longest = 100;

Text cut(const Text &text) {
    if (text->length() <= longest)
        return text;
    return text->substringToIndex(longest)->stringByAppendingString(u"..."_ns);
}

/// A property of computed bytes may have a getter of a name of its own and no variable.
Text structureText(const NSObject &model, const _QNModelPropertyMeta &meta) {
    try {
        if (const id value = model.valueForKey(meta._name))
            return descriptionOf(*value);
    } catch (const NSException &) {
    }
    return u"{unknown}"_ns;
}

Text head(const NSObject &object) {
    return NSString::stringWithFormat("<%@: %p>", object.isa(), static_cast<const void *>(&object));
}

/// Appends the lines, indented after each line feed.
void appendIndented(std::u16string &text, std::u16string_view lines, std::size_t levels) {
    for (;;) {
        const std::size_t end = lines.find(u'\n');
        text += lines.substr(0, end);
        if (end == lines.npos)
            return;
        text += u'\n';
        text.append(4 * levels, u' ');
        lines.remove_prefix(end + 1);
    }
}

/// Writes each line once, with its final indentation: indenting whole texts level by level would take
/// quadratic time.
class Writer {
public:
    void writeObject(const id &object);
    Text text() { return make<NSString>(std::move(text_)); }

private:
    void write(std::u16string_view lines) {
        const std::size_t before = text_.size();
        appendIndented(text_, lines, level_);
        DescriptionLength::use(text_.size() - before);
    }
    void write(const Text &lines) { write(lines->units()); }
    void writeOfKind(FoundationKind kind, const id &object);
    void writeDictionary(const NSDictionary &dictionary);
    void writeArray(const NSArray &array);
    void writeModel(NSObject &model, const _QNModelMeta &meta);
    void writeProperty(NSObject &model, const _QNModelPropertyMeta &meta);

    /// One line per item: its key, unless that is none, and what `writeValue` writes.
    template <class Items, class KeyOf, class WriteValue>
    void writeLines(const char16_t (&brackets)[3], const Items &items, const KeyOf &keyOf,
                    const WriteValue &writeValue) {
        const char16_t *separator = u"\n    ";
        write({brackets, 1});
        for (const auto &item : items) {
            write(separator);
            separator = u";\n    ";
            if (DescriptionLength::isUsedUp()) {
                write(DescriptionLength::rest);
                break;
            }
            if (const id key = keyOf(item))
                write(NSString::stringWithFormat("%@ = ", key));
            ++level_;
            writeValue(item);
            --level_;
        }
        write(items.empty() ? u"" : u"\n");
        write({brackets + 1, 1});
    }

    const DescriptionLength length_;
    std::u16string text_;
    std::size_t level_ = 0;
};

void Writer::writeObject(const id &object) {
    if (!object)
        return write(u"<nil>");
    if (peek<NSNull>(object))
        return write(u"<null>");
    if (!Visit::admits(*object))
        return write(head(*object));
    const Visit visit(*object);
    const auto meta = _QNModelMeta::metaWithClass(object->isa());
    if (meta->_nsType == FoundationKind::None)
        writeModel(*object, *meta);
    else
        writeOfKind(meta->_nsType, object);
}

void Writer::writeOfKind(FoundationKind kind, const id &object) {
    switch (kind) {
    case FoundationKind::String:
    case FoundationKind::MutableString:
        return write(NSString::stringWithFormat("\"%@\"", object));
    case FoundationKind::Value:
    case FoundationKind::Data:
    case FoundationKind::MutableData:
        return write(cut(descriptionOf(*object)));
    case FoundationKind::Array:
    case FoundationKind::MutableArray:
        return writeArray(static_cast<const NSArray &>(*object));
    case FoundationKind::Dictionary:
    case FoundationKind::MutableDictionary:
        return writeDictionary(static_cast<const NSDictionary &>(*object));
    case FoundationKind::Set:
    case FoundationKind::MutableSet:
        return writeArray(*static_cast<const NSSet &>(*object).allObjects());
    default:
        return write(descriptionOf(*object));
    }
}

void Writer::writeDictionary(const NSDictionary &dictionary) {
    writeLines(
        u"{}", dictionary.allEntries(), [](const auto &entry) { return entry.first; },
        [&](const auto &entry) { writeObject(entry.second); });
}

void Writer::writeArray(const NSArray &array) {
    writeLines(
        u"[]", array.allObjects(), [](const id &) { return nullptr; },
        [&](const id &element) { writeObject(element); });
}

void Writer::writeModel(NSObject &model, const _QNModelMeta &meta) {
    std::vector<const _QNModelPropertyMeta *> properties;
    for (const id &property : meta._allPropertyMetas)
        properties.push_back(static_cast<const _QNModelPropertyMeta *>(property.get()));
    write(head(model));
    if (properties.empty())
        return;
    std::ranges::sort(properties, {}, [](const auto *property) { return property->_name->units(); });
    write(u" ");
    writeLines(
        u"{}", properties, [](const auto *property) { return property->_name; },
        [&](const auto *property) { writeProperty(model, *property); });
}

void Writer::writeProperty(NSObject &model, const _QNModelPropertyMeta &meta) {
    if (meta._isCNumber)
        return write(qn::numberOfProperty(model, meta)->stringValue());
    switch (meta.valueType()) {
    case QNEncodingTypeObject:
        return writeObject(meta.get<id>(model));
    case QNEncodingTypeClass: {
        const Class cls = meta.get<Class>(model);
        return write(cls ? cls->description() : u"<nil>"_ns);
    }
    case QNEncodingTypeSEL: {
        const SEL selector = meta.get<SEL>(model);
        return write(selector ? NSString::stringWithUTF8String(sel_getName(selector)) : u"<NULL>"_ns);
    }
    case QNEncodingTypeBlock: {
        const id block = meta.get<id>(model);
        return write(block ? block->description() : u"<nil>"_ns);
    }
    case QNEncodingTypePointer:
    case QNEncodingTypeCString:
    case QNEncodingTypeCArray:
        return write(NSString::stringWithFormat("%p", meta.get<void *>(model)));
    case QNEncodingTypeStruct:
    case QNEncodingTypeUnion:
        return write(structureText(model, meta));
    default:
        return write(u"<unknown>");
    }
}

} // namespace

Ref<NSString> ModelDescription(const id &object) {
    Writer writer;
    writer.writeObject(object);
    return writer.text();
}

Ref<NSMutableString> ModelDescriptionAddIndent(const Ref<NSMutableString> &text) {
    if (!text)
        return nullptr;
    std::u16string indented;
    appendIndented(indented, text->units(), 1);
    text->setString(make<NSString>(std::move(indented)));
    return text;
}

Ref<NSString> qn::modelDescription(const id &model) {
    return model ? ModelDescription(model) : nullptr;
}
