#include "Platform/Foundation/Collections/NSNull.h"

#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Class.h"

NS_IMPLEMENTATION(NSNull) {
    cls.instantiate([] { return null(); });
}

Ref<NSNull> NSNull::null() {
    static const auto &theNull = *new Ref<NSNull>(make<NSNull>());
    return theNull;
}

Ref<NSString> NSNull::description() const {
    return u"<null>"_ns;
}
