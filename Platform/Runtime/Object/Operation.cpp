#include "Platform/Runtime/Object/Operation.h"

#include "Platform/Runtime/Object/Class.h"
#include "Platform/Runtime/Object/NSException.h"

#include <atomic>

namespace {

constinit std::atomic<const runtime::Agreement *> newest = nullptr;

} // namespace

runtime::Agreement::Agreement(const char *selector, bool ofClassObject, std::string (*encoding)())
    : selector_(selector), ofClassObject_(ofClassObject), encoding_(encoding),
      next_(newest.load(std::memory_order_relaxed)) {
    while (!newest.compare_exchange_weak(next_, this, std::memory_order_release, std::memory_order_relaxed)) {
    }
}

void runtime::Agreement::check(const objc_class &cls, const objc_method &method) {
    for (const auto *each = newest.load(std::memory_order_acquire); each; each = each->next_) {
        if (method.name->name != each->selector_)
            continue;
        const std::string encoding = each->encoding_();
        if (cls.isMetaClass() == each->ofClassObject_ && method.types == encoding)
            continue;
        throw NSException(NSInvalidArgumentException,
                          "class " + cls.name() + ": " + each->selector_ + " has to be an operation of " +
                              (each->ofClassObject_ ? "the class object" : "instances") + " with the types " +
                              encoding + ", not of " +
                              (cls.isMetaClass() ? "the class object" : "instances") + " with " +
                              method.types);
    }
}
