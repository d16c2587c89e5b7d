#include "Platform/Foundation/System/NSURL.h"

#include "Platform/Foundation/System/URLParts.h"
#include "Platform/Foundation/Text/NSCharacterSet.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Class.h"
#include "Platform/Runtime/Object/Raise.h"

#include <filesystem>
#include <system_error>

NS_IMPLEMENTATION(NSURL) {
    cls.method<&NSURL::absoluteString>("absoluteString").method<&NSURL::path>("path");
}

Ref<NSURL> NSURL::URLWithString(const Ref<NSString> &text) {
    return text && URLParts(text->units()).areValid() ? make<NSURL>(as<NSString>(text->copy())) : nullptr;
}

Ref<NSURL> NSURL::fileURLWithPath(const Ref<NSString> &path) {
    const auto utf8 = path ? path->strictUTF8() : std::nullopt;
    if (!utf8 || utf8->empty())
        return nullptr;
    std::error_code error; // the current folder may be gone, or its name not valid UTF-8
    const auto absolute = NSString::stringWithUTF8String(std::filesystem::absolute(*utf8, error).string());
    if (error || !absolute)
        return nullptr;
    const auto allowed =
        NSCharacterSet::URLQueryAllowedCharacterSet()->setByRemovingCharactersInString(u"?;");
    return make<NSURL>(NSString::stringWithFormat(
        "file://%@", absolute->stringByAddingPercentEncodingWithAllowedCharacters(allowed)));
}

NSURL::NSURL(Ref<NSString> text) : text_(std::move(text)) {
    runtime::checkObject("NSURL initWithString:", text_);
}

Ref<NSString> NSURL::scheme() const {
    const auto scheme = URLParts(text_->units()).scheme;
    return scheme ? make<NSString>(std::u16string(*scheme))->lowercaseString() : nullptr;
}

bool NSURL::isFileURL() const {
    const auto name = scheme();
    return name && name->units() == u"file";
}

Ref<NSString> NSURL::path() const {
    return make<NSString>(std::u16string(URLParts(text_->units()).path))->stringByRemovingPercentEncoding();
}

bool NSURL::isEqual(const id &other) const {
    const auto url = as<NSURL>(other);
    return url && url->text_->isEqual(text_);
}

NSUInteger NSURL::hash() const {
    return text_->hash();
}
