// Why an operation gave no result.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

class NSString;
class NSDictionary;

/// Domain of errors of the platform's readers and writers.
Ref<NSString> NSCocoaErrorDomain();
/// Keys of `userInfo`.
Ref<NSString> NSLocalizedDescriptionKey();
Ref<NSString> NSLocalizedRecoverySuggestionErrorKey();
/// What went wrong in a developer's words, e.g. the offset at which a text stops being JSON.
Ref<NSString> NSDebugDescriptionErrorKey();

/// The text or bytes are not in the format to be read.
inline constexpr NSInteger NSPropertyListReadCorruptError = 3840;
/// The object cannot be written in the format.
inline constexpr NSInteger NSPropertyListWriteInvalidError = 3852;

class NSError : public NSObject {
    NS_CLASS(NSError, NSObject)
public:
    NSError(Ref<NSString> domain, NSInteger code, Ref<NSDictionary> userInfo);

    static Ref<NSError> errorWithDomain(const Ref<NSString> &domain, NSInteger code,
                                        const Ref<NSDictionary> &userInfo);

    Ref<NSString> domain() const { return domain_; }
    NSInteger code() const { return code_; }
    /// Never none.
    Ref<NSDictionary> userInfo() const { return userInfo_; }
    /// A sentence for people; made from domain and code when none was given.
    Ref<NSString> localizedDescription() const;
    /// What people can do about it, or none.
    Ref<NSString> localizedRecoverySuggestion() const;

    /// `Error Domain=… Code=… "…" (…)`
    Ref<NSString> description() const override;
    id copy() const override { return self(); }

private:
    const Ref<NSString> domain_;
    const NSInteger code_;
    const Ref<NSDictionary> userInfo_;
};
