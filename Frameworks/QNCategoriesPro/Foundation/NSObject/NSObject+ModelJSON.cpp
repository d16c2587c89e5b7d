#include "Frameworks/QNCategoriesPro/Foundation/NSObject/NSObject+ModelJSON.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Writing/ModelWriter.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Writing/WritableJSON.h"
#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Serialization/JSON/NSJSONSerialization.h"
#include "Platform/Foundation/Text/NSString.h"

id qn::modelToJSONObject(const id &model) {
    id json = ModelToJSONObjectRecursive(model);
    return peek<NSArray>(json) || peek<NSDictionary>(json) ? json : nullptr;
}

Ref<NSData> qn::modelToJSONData(const id &model) {
    if (const auto straight = writeModel(model))
        return *straight;
    const auto written = [](const id &json) {
        return NSJSONSerialization::dataWithJSONObject(json, NSJSONWritingOptions::None, nullptr);
    };
    const id json = modelToJSONObject(model);
    if (!json)
        return nullptr;
    const auto data = written(json);
    return data ? data : written(writableJSON(json));
}

Ref<NSString> qn::modelToJSONString(const id &model) {
    const auto data = modelToJSONData(model);
    if (!data)
        return nullptr;
    return NSString::stringWithUTF8String({reinterpret_cast<const char *>(data->bytes()), data->length()});
}
