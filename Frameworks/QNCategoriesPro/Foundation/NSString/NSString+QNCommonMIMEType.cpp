// MIME types: in a file of their own, so that only programs that use them are linked to the desktop's library
// of types.
#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+QNCommon.h"

#include "Platform/Foundation/System/UniformType.h"
#include "Platform/Foundation/Text/NSString.h"

namespace {

Ref<NSString> extensionOf(const Ref<NSString> &text) {
    auto extension = text->pathExtension();
    if (qn::stringByTrim(extension)->length() > 0)
        return extension;
    return text->hasPrefix(u"."_ns) ? text->substringFromIndex(1) : text;
}

} // namespace

Ref<NSString> qn::MIMEType(const Ref<NSString> &text) {
    if (!text)
        return nullptr;
    const auto type = preferredMIMETypeForExtension(extensionOf(text)->utf8());
    return NSString::stringWithUTF8String(type.value_or("application/octet-stream"));
}
