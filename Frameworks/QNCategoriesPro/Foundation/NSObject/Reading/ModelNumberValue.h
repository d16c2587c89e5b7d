// Values of a dictionary as numbers. Any thread.
//
// | value        | number                                                                              |
// |--------------|-------------------------------------------------------------------------------------|
// | number       | itself                                                                              |
// | text         | "true", "YES" and the like a boolean; "null", "(null)" and the like none             |
// | other text   | with a dot the leading decimal number, else the leading whole number; 0 without one |
// | anything else| none                                                                                |
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/_QNModelPropertyMeta.h"
#include "Platform/Foundation/Numbers/NSNumber.h"

namespace qn {

/// The value as a number, by the table; none also for a text with a number that is not finite.
Ref<NSNumber> numberFromValue(const id &value);

/// Whether the text is one of the words of the table or begins with a number.
bool saysNumber(const NSString &text);

/// Sets a number property, narrowed as NSNumber does; to 0 for a value that is not a number. Not-a-number
/// becomes 0, and so do infinite floats and doubles.
void setNumber(NSObject &model, const id &value, const _QNModelPropertyMeta &meta);

} // namespace qn
