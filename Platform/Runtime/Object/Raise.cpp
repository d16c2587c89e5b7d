#include "Platform/Runtime/Object/Raise.h"

namespace {

[[noreturn]] void raise(const char *name, const char *operation, const std::string &fault) {
    throw NSException(name, runtime::operationText(operation) + ": " + fault);
}

} // namespace

void runtime::checkIndex(const char *operation, NSUInteger index, NSUInteger bound) {
    if (index >= bound)
        raise(NSRangeException, operation,
              "index " + std::to_string(index) + " beyond bounds; count " + std::to_string(bound));
}

void runtime::checkRange(const char *operation, NSUInteger location, NSUInteger length, NSUInteger count) {
    if (location > count || length > count - location)
        raise(NSRangeException, operation,
              "range {" + std::to_string(location) + ", " + std::to_string(length) +
                  "} extends beyond count " + std::to_string(count));
}

void runtime::checkCount(const char *operation, NSUInteger count) {
    constexpr NSUInteger absurd = NSUInteger{1} << 40;
    if (count >= absurd)
        raise(NSInvalidArgumentException, operation,
              "count " + std::to_string(count) + " is more than memory holds");
}

void runtime::checkArgument(const char *operation, bool valid, const char *fault) {
    if (!valid)
        raise(NSInvalidArgumentException, operation, fault);
}
