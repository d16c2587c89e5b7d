#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/ModelHooks.h"

#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Runtime/Object/Message.h"

namespace {

[[gnu::init_priority(101)]] const runtime::Agreement agreements[] = {
    runtime::Agreement(qn::hooks::modelCustomPropertyMapper),
    runtime::Agreement(qn::hooks::modelContainerPropertyGenericClass),
    runtime::Agreement(qn::hooks::modelPropertyBlacklist),
    runtime::Agreement(qn::hooks::modelPropertyWhitelist),
    runtime::Agreement(qn::hooks::modelCustomClassForDictionary),
    runtime::Agreement(qn::hooks::modelCustomWillTransformFromDictionary),
    runtime::Agreement(qn::hooks::modelCustomTransformFromDictionary),
    runtime::Agreement(qn::hooks::modelCustomTransformToDictionary),
};

} // namespace

id qn::hooks::ask(Class cls, SEL hook) {
    return cls->respondsToSelector(hook) ? objc_msgSend<id>(cls->self(), hook) : nullptr;
}

Class qn::hooks::customClass(Class cls, const Ref<NSDictionary> &dictionary) {
    const SEL hook = runtime::selectorOf<modelCustomClassForDictionary>();
    if (!cls || !cls->respondsToSelector(hook))
        return nullptr;
    return objc_msgSend<Class>(cls->self(), hook, id(dictionary));
}
