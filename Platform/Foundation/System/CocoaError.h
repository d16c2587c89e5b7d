// How the platform's readers and writers say why they failed.
#pragma once

#include "Platform/Foundation/System/NSError.h"

/// An error of NSCocoaErrorDomain. The reason is for developers, the description, which may be none, for
/// people.
Ref<NSError> cocoaError(NSInteger code, const Ref<NSString> &reason,
                        const Ref<NSString> &description = nullptr);
