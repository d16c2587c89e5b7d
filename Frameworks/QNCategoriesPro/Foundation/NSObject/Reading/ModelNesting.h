// The dictionaries that the thread is filling models with, each in the middle of the one before.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Values/ModelVisit.h"

namespace qn {

using ModelNesting = ModelVisit<struct Filling>;

} // namespace qn
