/* The interface is C, too: that this compiles is the test. */
#include "Platform/Transport/zkcomtl.h"
