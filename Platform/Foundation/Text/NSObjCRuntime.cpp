#include "Platform/Foundation/Text/NSObjCRuntime.h"

#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Class.h"

SEL NSSelectorFromString(const Ref<NSString> &name) {
    return name ? sel_registerName(name->utf8()) : nullptr;
}

Ref<NSString> NSStringFromSelector(SEL selector) {
    return selector ? NSString::stringWithUTF8String(selector->name) : nullptr;
}

Class NSClassFromString(const Ref<NSString> &name) {
    return name ? objc_getClass(name->utf8()) : nullptr;
}

Ref<NSString> NSStringFromClass(Class cls) {
    return cls ? NSString::stringWithUTF8String(cls->name()) : nullptr;
}
