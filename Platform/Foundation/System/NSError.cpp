#include "Platform/Foundation/System/NSError.h"

#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Class.h"

NS_IMPLEMENTATION(NSError) {}

Ref<NSString> NSCocoaErrorDomain() {
    return u"NSCocoaErrorDomain"_ns;
}
Ref<NSString> NSLocalizedDescriptionKey() {
    return u"NSLocalizedDescription"_ns;
}
Ref<NSString> NSLocalizedRecoverySuggestionErrorKey() {
    return u"NSLocalizedRecoverySuggestion"_ns;
}
Ref<NSString> NSDebugDescriptionErrorKey() {
    return u"NSDebugDescription"_ns;
}

NSError::NSError(Ref<NSString> domain, NSInteger code, Ref<NSDictionary> userInfo)
    : domain_(std::move(domain)), code_(code),
      userInfo_(userInfo ? std::move(userInfo) : NSDictionary::dictionary()) {}

Ref<NSError> NSError::errorWithDomain(const Ref<NSString> &domain, NSInteger code,
                                      const Ref<NSDictionary> &userInfo) {
    return make<NSError>(domain, code, userInfo);
}

Ref<NSString> NSError::localizedDescription() const {
    if (auto text = as<NSString>(userInfo_->objectForKey(NSLocalizedDescriptionKey())))
        return text;
    return NSString::stringWithFormat("The operation couldn’t be completed. (%@ error %ld.)", domain_, code_);
}

Ref<NSString> NSError::localizedRecoverySuggestion() const {
    return as<NSString>(userInfo_->objectForKey(NSLocalizedRecoverySuggestionErrorKey()));
}

Ref<NSString> NSError::description() const {
    const auto head =
        NSString::stringWithFormat("Error Domain=%@ Code=%ld \"%@\"", domain_, code_, localizedDescription());
    const auto debug = userInfo_->objectForKey(NSDebugDescriptionErrorKey());
    return debug ? head->stringByAppendingFormat(" (%@)", debug) : head;
}
