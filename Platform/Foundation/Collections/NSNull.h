// The null marker: a value that stands for "no value" where a collection needs an object.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

class NSNull : public NSObject {
    NS_CLASS(NSNull, NSObject)
public:
    /// The only instance.
    static Ref<NSNull> null();

    /// "<null>"
    Ref<NSString> description() const override;
    id copy() const override { return self(); }
};
