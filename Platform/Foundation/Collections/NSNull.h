// An object that stands for "no value" in collections, which cannot hold none.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#pragma GCC visibility push(default)

class NSNull : public NSObject {
    NS_CLASS(NSNull, NSObject)
public:
    /// The only instance.
    static Ref<NSNull> null();

    /// "<null>"
    Ref<NSString> description() const override;
    id copy() const override { return self(); }
};

#pragma GCC visibility pop
