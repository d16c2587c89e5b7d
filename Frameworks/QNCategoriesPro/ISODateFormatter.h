// The form in which models write dates, and the first in which texts are read as dates:
// "yyyy-MM-dd'T'HH:mm:ssZ", e.g. 2014-01-20T12:24:48+0100.
#pragma once

#include "Platform/Foundation/Dates/NSDateFormatter.h"

#pragma GCC visibility push(default)

namespace qn {

/// The shared formatter, which writes in the time zone of the system. Any thread.
const NSDateFormatter &ISODateFormatter();

} // namespace qn

#pragma GCC visibility pop
