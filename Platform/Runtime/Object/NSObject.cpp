#include "Platform/Runtime/Object/NSObject.h"

#include "Platform/Runtime/Object/Class.h"
#include "Platform/Runtime/Object/NSException.h"

[[gnu::init_priority(101)]] const runtime::ClassAnnouncement NSObject::announcement_(declaredName,
                                                                                     &NSObject::class_);

Class NSObject::class_() {
    static const Class theClass = objc_class::declareClass(announcement_, nullptr, [](Class made) {
        ClassBuilder<NSObject> builder(made);
        declare(builder);
    });
    return theClass;
}

NSUInteger NSObject::hash() const {
    return reinterpret_cast<std::uintptr_t>(this) >> 4;
}

bool NSObject::isKindOfClass(Class cls) const {
    return isa()->isSubclassOf(cls);
}

bool NSObject::respondsToSelector(SEL selector) const {
    return isa()->findMethod(selector) != nullptr;
}

void NSObject::raiseUnowned() const {
    throw NSException(NSInvalidArgumentException,
                      "-[" + isa()->name() +
                          " self]: nobody owns the object, which is being made or ended, or "
                          "does not live in a Ref");
}

namespace {
[[noreturn]] id raiseNotCopyable(const NSObject &object, const char *operation) {
    throw NSException(NSInvalidArgumentException, "-[" + object.isa()->name() + " " + operation +
                                                      "]: instances of this class cannot be copied");
}
} // namespace

id NSObject::copy() const {
    return raiseNotCopyable(*this, "copyWithZone:");
}
id NSObject::mutableCopy() const {
    return raiseNotCopyable(*this, "mutableCopyWithZone:");
}
