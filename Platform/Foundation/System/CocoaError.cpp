#include "Platform/Foundation/System/CocoaError.h"

#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Text/NSString.h"

Ref<NSError> cocoaError(NSInteger code, const Ref<NSString> &reason, const Ref<NSString> &description) {
    const auto info = description
                          ? NSDictionary::dictionaryWithEntries({{NSLocalizedDescriptionKey(), description},
                                                                 {NSDebugDescriptionErrorKey(), reason}})
                          : NSDictionary::dictionaryWithEntries({{NSDebugDescriptionErrorKey(), reason}});
    return NSError::errorWithDomain(NSCocoaErrorDomain(), code, info);
}
