// The document mapped by Boost.JSON from and to the plain structures, which Boost.Describe tells of.
#pragma once

#include "Benchmarks/ModelMapping/StructPrinters.h"

struct DescribedPrinters {
    using Text = std::string;
    using Objects = std::vector<StructPrinter>;

    static Text text(const std::string &document) { return document; }
    static Objects read(const Text &text);
    static Text write(const Objects &objects);
    static std::size_t count(const Objects &objects) { return objects.size(); }
};
