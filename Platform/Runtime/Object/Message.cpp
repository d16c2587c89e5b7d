#include "Platform/Runtime/Object/Message.h"

#include <cstdio>

void runtime::raiseUnrecognizedSelector(const NSObject &receiver, SEL selector, Method found) {
    const bool toClass = receiver.isKindOfClass(NSObject::class_()->metaClass());
    const auto *asClass = toClass ? static_cast<const objc_class *>(&receiver) : nullptr;
    char address[32];
    std::snprintf(address, sizeof address, "%p", static_cast<const void *>(&receiver));
    throw NSException(NSInvalidArgumentException,
                      std::string(toClass ? "+[" : "-[") +
                          (asClass ? asClass->name() : receiver.isa()->name()) + " " + sel_getName(selector) +
                          (found ? "]: sent with other types than " + found->types + " to instance "
                                 : "]: unrecognized selector sent to instance ") +
                          address);
}
