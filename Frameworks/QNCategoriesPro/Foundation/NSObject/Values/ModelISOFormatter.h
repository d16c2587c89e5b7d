// The form in which models read and write dates first: "yyyy-MM-dd'T'HH:mm:ssZ", e.g.
// 2014-01-20T12:24:48+0100.
#pragma once

#include "Platform/Foundation/Dates/NSDateFormatter.h"

namespace qn {

/// The shared formatter, which writes in the time zone of the system. Any thread.
const NSDateFormatter &modelISOFormatter();

} // namespace qn
