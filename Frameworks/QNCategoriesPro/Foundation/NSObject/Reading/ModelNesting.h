// The dictionaries that the thread is filling models with, each in the middle of the one before.
#pragma once

#include "Platform/Foundation/Collections/ObjectVisit.h"

namespace qn {

using ModelNesting = ObjectVisit<struct Filling>;

} // namespace qn
