// Drawing by lot. Any thread.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

namespace qn {

/// An index below the bound, which is not 0; each as likely as the others.
NSUInteger randomIndex(NSUInteger bound);

} // namespace qn
