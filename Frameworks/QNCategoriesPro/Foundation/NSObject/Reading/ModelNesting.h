// The dictionaries that the thread is filling models from, each within the one before.
#pragma once

#include "Platform/Foundation/Collections/ObjectVisit.h"

namespace qn {

using ModelNesting = ObjectVisit<struct Filling>;

} // namespace qn
