// The reason why an operation failed. Immutable, so any thread may use one.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#pragma GCC visibility push(default)

class NSString;
class NSDictionary;

/// The domain of the errors of the platform's readers and writers.
Ref<NSString> NSCocoaErrorDomain();
/// Keys of `userInfo`.
Ref<NSString> NSLocalizedDescriptionKey();
Ref<NSString> NSLocalizedRecoverySuggestionErrorKey();
/// What went wrong, for developers, e.g. the offset at which a text is not valid JSON.
Ref<NSString> NSDebugDescriptionErrorKey();

/// The text or bytes are not in the expected format.
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
    /// A sentence for people; made from domain and code when `userInfo` has none.
    Ref<NSString> localizedDescription() const;
    /// What people can do about it; none when `userInfo` does not say.
    Ref<NSString> localizedRecoverySuggestion() const;

    /// `Error Domain=… Code=… "…" (…)`
    Ref<NSString> description() const override;
    id copy() const override { return self(); }

private:
    const Ref<NSString> domain_;
    const NSInteger code_;
    const Ref<NSDictionary> userInfo_;
};

#pragma GCC visibility pop
