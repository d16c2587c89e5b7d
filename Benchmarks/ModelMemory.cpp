// Prints how many bytes the peak of the process's memory rises while a document is mapped to objects.
//
//     model_memory ours|qt
#include "Benchmarks/ModelMapping/Document.h"
#include "Benchmarks/ModelMapping/OurPrinters.h"
#include "Benchmarks/ModelMapping/QtPrinters.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <sys/resource.h>

namespace {

constexpr int printers = 20000;

long peakBytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss * 1024;
}

template <class Printers>
int measure() {
    // What is loaded and made once is no part of it.
    Printers::read(Printers::text(printersDocument(1)));
    const auto text = Printers::text(printersDocument(printers));
    const long before = peakBytes();
    const auto objects = Printers::read(text);
    const long after = peakBytes();
    if (Printers::count(objects) != printers)
        return EXIT_FAILURE;
    std::printf("%ld\n", after - before);
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char **argv) {
    const std::string_view which = argc == 2 ? argv[1] : "";
    if (which == "ours")
        return measure<OurPrinters>();
    if (which == "qt")
        return measure<QtPrinters>();
    std::fputs("Usage: model_memory ours|qt\n", stderr);
    return 2;
}
