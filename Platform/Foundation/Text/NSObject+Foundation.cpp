// The descriptions of the root object and of class objects.
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Class.h"

void NSObject::declare(ClassBuilder<NSObject> &cls) {
    cls.method<&NSObject::isEqual>("isEqual:")
        .method<&NSObject::hash>("hash")
        .method<&NSObject::description>("description")
        .method<&NSObject::copy>("copy")
        .method<&NSObject::mutableCopy>("mutableCopy");
}

Ref<NSString> NSObject::description() const {
    return NSString::stringWithFormat("<%s: %p>", isa()->name().c_str(), static_cast<const void *>(this));
}

Ref<NSString> descriptionOf(const NSObject &object) {
    const auto text = object.description();
    return text ? text : u"(null)"_ns;
}

Ref<NSString> objc_class::description() const {
    return NSString::stringWithUTF8String(name_);
}
