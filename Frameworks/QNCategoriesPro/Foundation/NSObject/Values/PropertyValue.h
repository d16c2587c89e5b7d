// What a property holds, as an object. Any thread, as the getter allows.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/_QNModelPropertyMeta.h"
#include "Platform/Foundation/Numbers/NSNumber.h"

namespace qn {

/// Of a property of a number, as wide as its type; a long double as a double.
Ref<NSNumber> numberOfProperty(NSObject &model, const _QNModelPropertyMeta &meta);
/// The same; none for one that is not finite.
Ref<NSNumber> finiteNumberOfProperty(NSObject &model, const _QNModelPropertyMeta &meta);
/// By key-value coding under the name of the getter.
id valueOfProperty(const NSObject &model, const _QNModelPropertyMeta &meta);

} // namespace qn
