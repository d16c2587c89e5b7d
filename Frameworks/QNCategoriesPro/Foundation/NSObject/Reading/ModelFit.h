// Whether a value fits a property, by the rules of the conversions. It asks these, and sets nothing in
// models.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/_QNModelPropertyMeta.h"

#include <optional>

namespace qn {

/// Why the value, which is not null, does not fit, as the end of a sentence: "which is no number". Nothing
/// when it fits: what the property gets of it is made of the whole value, though maybe rounded. What a
/// container or a model holds is not looked at.
std::optional<std::string> misfitOf(const _QNModelPropertyMeta &property, const id &value);

} // namespace qn
