// The document mapped by Boost.JSON from and to the plain structures, which Boost.Describe tells of.
#pragma once

#include "Benchmarks/ModelMapping/StructPrinters.h"

struct DescribedPrinters : StructPrinters {
    static Objects read(const Text &text);
    static Text write(const Objects &objects);
};
