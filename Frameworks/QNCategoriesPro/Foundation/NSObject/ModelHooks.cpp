#include "Frameworks/QNCategoriesPro/Foundation/NSObject/ModelHooks.h"

#include "Platform/Foundation/NSDictionary.h"
#include "Platform/Runtime/Message.h"

#define QN_HOOK(name, colon)                                                                                 \
    SEL qn::hooks::name() {                                                                                  \
        static const SEL selector = sel_registerName(#name colon);                                           \
        return selector;                                                                                     \
    }

QN_HOOK(modelCustomPropertyMapper, "")
QN_HOOK(modelContainerPropertyGenericClass, "")
QN_HOOK(modelPropertyBlacklist, "")
QN_HOOK(modelPropertyWhitelist, "")
QN_HOOK(modelCustomClassForDictionary, ":")
QN_HOOK(modelCustomWillTransformFromDictionary, ":")
QN_HOOK(modelCustomTransformFromDictionary, ":")
QN_HOOK(modelCustomTransformToDictionary, ":")

id qn::hooks::ask(Class cls, SEL hook) {
    return cls->respondsToSelector(hook) ? objc_msgSend<id>(cls->self(), hook) : nullptr;
}

Class qn::hooks::customClass(Class cls, const Ref<NSDictionary> &dictionary) {
    if (!cls || !cls->respondsToSelector(modelCustomClassForDictionary()))
        return nullptr;
    return objc_msgSend<Class>(cls->self(), modelCustomClassForDictionary(), id(dictionary));
}
