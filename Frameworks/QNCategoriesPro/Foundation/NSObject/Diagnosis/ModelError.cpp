#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Diagnosis/ModelError.h"

#include "Platform/Foundation/Text/NSString.h"

Ref<NSString> qn::modelErrorDomain() {
    return u"QNModelErrorDomain"_ns;
}
Ref<NSString> qn::modelErrorPropertyKey() {
    return u"QNModelErrorProperty"_ns;
}
Ref<NSString> qn::modelErrorKeyPathKey() {
    return u"QNModelErrorKeyPath"_ns;
}
Ref<NSString> qn::modelErrorValueKey() {
    return u"QNModelErrorValue"_ns;
}
Ref<NSString> qn::modelErrorLineKey() {
    return u"QNModelErrorLine"_ns;
}
Ref<NSString> qn::modelErrorColumnKey() {
    return u"QNModelErrorColumn"_ns;
}
Ref<NSString> qn::modelErrorOffsetKey() {
    return u"QNModelErrorOffset"_ns;
}
