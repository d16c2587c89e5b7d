#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Writing/ModelWriter.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/_QNModelMeta.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Values/ModelWalk.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Writing/JSONObjectWriter.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Writing/ModelWriting.h"
#include "Frameworks/QNCategoriesPro/ISODateFormatter.h"
#include "Platform/Foundation/Collections/NSAttributedString.h"
#include "Platform/Foundation/Collections/NSSet.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Dates/NSDate.h"
#include "Platform/Foundation/Serialization/JSON/JSONWriter.h"
#include "Platform/Foundation/System/NSURL.h"
#include "Platform/Foundation/Text/NSObjCRuntime.h"

#include <cmath>
#include <unordered_set>

namespace {

class ModelWriter {
public:
    std::vector<std::uint8_t> take() { return out_.take(); }
    bool gaveUp() const { return gaveUp_; }

    /// False, and nothing is written, for what has no JSON.
    bool value(const id &object);

private:
    bool model(const id &object);
    bool property(NSObject &model, const _QNModelPropertyMeta &meta);
    bool dictionary(const id &object);
    bool array(const id &array, const id &visited);
    bool text(const Ref<NSString> &text) { return text && accept(out_.string(*text)); }

    /// Writes the collection if it is valid JSON as it is; false, and nothing is written, otherwise.
    bool writeAsItIs(const id &collection);
    /// Writes a list. `items` gets a function that it calls once per item with a function that writes the
    /// item; what that one wrote is taken back when it returns false.
    template <class Items>
    bool list(const char (&brackets)[3], const Items &items);

    /// Returns true: the value has been dealt with, if only by giving up.
    bool accept(json::Reason reason) {
        gaveUp_ |= reason != nullptr;
        return true;
    }

    JSONWriter out_{NSJSONWritingOptions::None};
    bool gaveUp_ = false;
    std::unordered_set<id> notValid_; // collections that were met within others
};

bool ModelWriter::value(const id &object) {
    if (!object)
        return false;
    switch (qn::writtenKindOf(*object)) {
    case qn::WrittenKind::Text:
        return accept(out_.string(static_cast<const NSString &>(*object)));
    case qn::WrittenKind::Plain:
        return accept(out_.value(object));
    case qn::WrittenKind::Dictionary:
        return dictionary(object);
    case qn::WrittenKind::Set:
        return array(static_cast<const NSSet &>(*object).allObjects(), object);
    case qn::WrittenKind::Array:
        return array(object, object);
    case qn::WrittenKind::URL:
        return text(static_cast<const NSURL &>(*object).absoluteString());
    case qn::WrittenKind::AttributedString:
        return text(static_cast<const NSAttributedString &>(*object).string());
    case qn::WrittenKind::Date:
        return text(qn::ISODateFormatter().stringFromDate(as<NSDate>(object)));
    case qn::WrittenKind::Data:
        return false;
    case qn::WrittenKind::Model:
        break;
    }
    return model(object);
}

template <class Items>
bool ModelWriter::list(const char (&brackets)[3], const Items &items) {
    if (!accept(out_.open(brackets[0])) || gaveUp_)
        return true;
    bool isEmpty = true;
    items([&](const auto &write) {
        if (gaveUp_)
            return;
        const std::size_t before = out_.size();
        if (!isEmpty)
            out_.put(",");
        if (write())
            isEmpty = false;
        else
            out_.cutTo(before);
    });
    out_.close(brackets[1]);
    return true;
}

bool ModelWriter::writeAsItIs(const id &collection) {
    if (notValid_.contains(collection))
        return false;
    const std::size_t before = out_.size();
    const json::Reason reason = out_.value(collection);
    auto refused = out_.takeRefusedContainers();
    if (reason != json::invalidType && reason != json::notText)
        return accept(reason);
    out_.cutTo(before);
    refused.pop_back(); // the collection itself, which the caller deals with now
    notValid_.insert(std::move_iterator(refused.begin()), std::move_iterator(refused.end()));
    return false;
}

bool ModelWriter::dictionary(const id &object) {
    if (!qn::ModelWriting::admits(*object))
        return false;
    if (writeAsItIs(object))
        return true;
    const auto &dictionary = static_cast<const NSDictionary &>(*object);
    bool areTexts = true;
    qn::walkEntries(dictionary,
                    [&](const id &key, const id &) { areTexts = areTexts && peek<NSString>(key); });
    if (!areTexts) // the descriptions of two keys may be the same
        return accept(out_.value(ModelToJSONObjectRecursive(object)));
    const qn::ModelWriting visit(*object);
    return list("{}", [&](const auto &item) {
        qn::walkEntries(dictionary, [&](const id &key, const id &element) {
            item([&] {
                accept(out_.string(static_cast<const NSString &>(*key)));
                out_.put(":");
                if (!value(element))
                    out_.put("null");
                return true;
            });
        });
    });
}

bool ModelWriter::array(const id &array, const id &visited) {
    if (!qn::ModelWriting::admits(*visited))
        return false;
    if (writeAsItIs(array))
        return true;
    const qn::ModelWriting visit(*visited);
    return list("[]", [&](const auto &item) {
        qn::walkElements(static_cast<const NSArray &>(*array), [&](const id &element) {
            item([&] { return !qn::isNull(element) && value(element); });
        });
    });
}

bool ModelWriter::property(NSObject &model, const _QNModelPropertyMeta &meta) {
    if (meta._isCNumber)
        return meta.withNumberType([&]<class T>() {
            const T number = meta.get<T>(model);
            if constexpr (std::is_floating_point_v<T>) {
                const auto real = static_cast<double>(number);
                if (!std::isfinite(real))
                    return false;
                out_.number(real);
            } else if constexpr (std::is_same_v<T, bool>)
                out_.number(number);
            else
                out_.number(static_cast<std::conditional_t<std::is_signed_v<T>, std::int64_t, std::uint64_t>>(
                    number));
            return true;
        });
    switch (meta.valueType()) {
    case QNEncodingTypeObject: {
        const id object = meta.get<id>(model);
        return !(meta._nsType == qn::FoundationKind::None && qn::isNull(object)) && value(object);
    }
    case QNEncodingTypeClass:
        return text(NSStringFromClass(meta.get<Class>(model)));
    case QNEncodingTypeSEL:
        return text(NSStringFromSelector(meta.get<SEL>(model)));
    default:
        return false;
    }
}

bool ModelWriter::model(const id &object) {
    const auto meta = _QNModelMeta::metaWithClass(object->isa());
    if (meta->_keyMappedCount == 0 || !qn::ModelWriting::admits(*object))
        return false;
    if (!meta->_isWrittenPlainly) {
        const id json = ModelToJSONObjectRecursive(object);
        return json && accept(out_.value(json));
    }
    const qn::ModelWriting visit(*object);
    return list("{}", [&](const auto &item) {
        for (const auto &[key, head] : meta->_writtenKeys)
            item([&, &begin = key, property = head] {
                out_.put(begin);
                return this->property(*object, *property);
            });
    });
}

} // namespace

std::optional<Ref<NSData>> qn::writeModel(const id &object) {
    const auto kind = object ? writtenKindOf(*object) : WrittenKind::Plain;
    if (kind != WrittenKind::Model && kind != WrittenKind::Dictionary && kind != WrittenKind::Set &&
        kind != WrittenKind::Array)
        return Ref<NSData>();
    ModelWriter writer;
    const bool isWritten = writer.value(object);
    if (writer.gaveUp())
        return std::nullopt;
    return isWritten ? make<NSData>(writer.take()) : Ref<NSData>();
}
