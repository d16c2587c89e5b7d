#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Diagnosis/ModelFault.h"

#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Numbers/NSNumber.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Class.h"

#include <algorithm>

namespace {

/// Short, whatever the value is.
std::string shown(const id &value) {
    constexpr NSUInteger most = 40; // UTF-16 units
    if (const auto *text = peek<NSString>(value))
        return "\"" + text->substringToIndex(std::min(text->length(), most))->utf8() +
               (text->length() > most ? "…\"" : "\"");
    if (const auto *number = peek<NSNumber>(value))
        return number->stringValue()->utf8();
    return peek<NSArray>(value)        ? "an array"
           : peek<NSDictionary>(value) ? "an object"
                                       : "a value of " + value->isa()->name();
}

std::string sentence(const qn::ModelFault &fault, const std::optional<qn::JSONPlace> &place) {
    std::string text = fault.reason;
    if (fault.value)
        text = (fault.property.empty() ? "A model" : fault.property) + " cannot be " + shown(fault.value) +
               ", " + fault.reason;
    std::string where = qn::textOf(fault.path);
    if (place)
        where.append(where.empty() ? "" : ", ")
            .append("line " + std::to_string(place->line) + ", column " + std::to_string(place->column));
    return where.empty() ? text : text + ": " + where;
}

} // namespace

Ref<NSError> qn::errorOf(const ModelFault &fault, const std::string_view *text) {
    const auto info = NSMutableDictionary::dictionary();
    std::optional<JSONPlace> place;
    if (text) {
        const std::size_t offset = fault.offset ? *fault.offset : offsetOf(*text, fault.path);
        place = placeAt(*text, offset);
        info->setObject(NSNumber::numberWithUnsignedLongLong(offset), modelErrorOffsetKey());
        info->setObject(NSNumber::numberWithUnsignedLongLong(place->line), modelErrorLineKey());
        info->setObject(NSNumber::numberWithUnsignedLongLong(place->column), modelErrorColumnKey());
    }
    if (!fault.property.empty())
        info->setObject(NSString::stringWithUTF8String(fault.property), modelErrorPropertyKey());
    if (!fault.path.empty())
        info->setObject(NSString::stringWithUTF8String(textOf(fault.path)), modelErrorKeyPathKey());
    if (fault.value)
        info->setObject(fault.value, modelErrorValueKey());
    const auto description = NSString::stringWithUTF8String(sentence(fault, place));
    info->setObject(description, NSLocalizedDescriptionKey());
    return NSError::errorWithDomain(modelErrorDomain(), static_cast<NSInteger>(fault.code),
                                    as<NSDictionary>(info->copy()));
}
