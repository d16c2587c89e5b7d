#include "Frameworks/QNCategoriesPro/Foundation/NSArray/NSArray+QNJSON.h"

Ref<NSData> qn::plistData(const Ref<NSArray> &array) {
    return collection::plistData(array);
}

Ref<NSString> qn::plistString(const Ref<NSArray> &array) {
    return collection::plistString(array);
}

Ref<NSString> qn::jsonStringEncoded(const Ref<NSArray> &array) {
    return collection::jsonText(array, NSJSONWritingOptions::None);
}

Ref<NSString> qn::jsonPrettyStringEncoded(const Ref<NSArray> &array) {
    return collection::jsonText(array, collection::readable);
}
