#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelFoundationValue.h"

#include "Frameworks/QNCategoriesPro/DateFromLengthTable.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Reading/ModelNumberValue.h"
#include "Frameworks/QNCategoriesPro/ISODateFormatter.h"
#include "Platform/Foundation/Collections/NSAttributedString.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Dates/NSDate.h"
#include "Platform/Foundation/Numbers/NSDecimalNumber.h"
#include "Platform/Foundation/System/NSURL.h"
#include "Platform/Foundation/Text/NSCharacterSet.h"
#include "Platform/Foundation/Text/NSString.h"

using qn::PropertyStore;

namespace {

bool storeCopy(const PropertyStore &store, const id &value, bool isMutable) {
    return store(isMutable ? value->mutableCopy() : value);
}

bool storeText(const PropertyStore &store, const id &value, bool isMutable) {
    if (peek<NSString>(value))
        return storeCopy(store, value, isMutable);
    if (const auto *number = peek<NSNumber>(value))
        return storeCopy(store, number->stringValue(), isMutable);
    if (const auto *data = peek<NSData>(value)) {
        const auto bytes = data->span();
        const auto text =
            NSString::stringWithUTF8String({reinterpret_cast<const char *>(bytes.data()), bytes.size()});
        return store(text ? text->mutableCopy() : nullptr);
    }
    if (const auto *url = peek<NSURL>(value))
        return storeCopy(store, url->absoluteString(), isMutable);
    if (const auto *text = peek<NSAttributedString>(value))
        return storeCopy(store, text->string(), isMutable);
    return false;
}

bool storeDecimalNumber(const PropertyStore &store, const id &value) {
    if (peek<NSDecimalNumber>(value))
        return store(value);
    Ref<NSDecimalNumber> made;
    if (const auto *number = peek<NSNumber>(value))
        made = NSDecimalNumber::decimalNumberWithDecimal(number->decimalValue());
    else if (const auto text = as<NSString>(value))
        made = NSDecimalNumber::decimalNumberWithString(text);
    else
        return false;
    return store(made->value().isNotANumber ? nullptr : made); // JSON has no not-a-number
}

bool storeData(const PropertyStore &store, const id &value, bool isMutable) {
    if (peek<NSData>(value))
        return storeCopy(store, value, isMutable);
    const auto *text = peek<NSString>(value);
    if (!text)
        return false;
    const auto data = text->dataUsingUTF8();
    return data ? storeCopy(store, data, isMutable) : store(nullptr);
}

bool storeDate(const PropertyStore &store, const id &value) {
    if (peek<NSDate>(value))
        return store(value);
    const auto text = as<NSString>(value);
    if (!text)
        return false;
    // No text of these forms reads differently in the form of models, so the quick way may come first.
    if (const auto date = qn::dateFromFixedForm(text))
        return store(date);
    const auto date = qn::ISODateFormatter().dateFromString(text);
    return store(date ? date : qn::dateFromLengthTable(text));
}

bool storeURL(const PropertyStore &store, const id &value) {
    if (peek<NSURL>(value))
        return store(value);
    const auto *text = peek<NSString>(value);
    if (!text)
        return false;
    static const auto &blanks = *new Ref<NSCharacterSet>(NSCharacterSet::whitespaceAndNewlineCharacterSet());
    const auto trimmed = text->stringByTrimmingCharactersInSet(blanks);
    return store(trimmed->length() > 0 ? NSURL::URLWithString(trimmed) : nullptr);
}

} // namespace

bool qn::storeFoundationValue(const PropertyStore &store, const id &value) {
    switch (store.meta._nsType) {
    case qn::FoundationKind::String:
    case qn::FoundationKind::MutableString:
        return storeText(store, value, store.meta._nsType == qn::FoundationKind::MutableString);
    case qn::FoundationKind::Value:
        return peek<NSValue>(value) && store(value);
    case qn::FoundationKind::Number:
        return store(numberFromValue(value));
    case qn::FoundationKind::DecimalNumber:
        return storeDecimalNumber(store, value);
    case qn::FoundationKind::Data:
    case qn::FoundationKind::MutableData:
        return storeData(store, value, store.meta._nsType == qn::FoundationKind::MutableData);
    case qn::FoundationKind::Date:
        return storeDate(store, value);
    case qn::FoundationKind::URL:
        return storeURL(store, value);
    default:
        return false;
    }
}
