#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+QNCommon.h"

#include "Platform/Foundation/NSCharacterSet.h"
#include "Platform/Foundation/NSData.h"
#include "Platform/Foundation/NSString.h"

Ref<NSString> qn::URLEncode(const Ref<NSString> &text) {
    return text ? text->stringByAddingPercentEncodingWithAllowedCharacters(
                      NSCharacterSet::URLQueryAllowedCharacterSet())
                : nullptr;
}

Ref<NSData> qn::dataValue(const Ref<NSString> &text) {
    return text ? text->dataUsingUTF8() : nullptr;
}
