#include "Platform/Foundation/Collections/CollectionArguments.h"

#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Runtime/Object/NSException.h"

namespace collections {

namespace {

[[noreturn]] void raise(const char *name, const char *operation, const std::string &fault) {
    throw NSException(name, std::string("-[") + operation + "]: " + fault);
}

} // namespace

void checkIndex(const char *operation, NSUInteger index, NSUInteger bound) {
    if (index >= bound)
        raise(NSRangeException, operation,
              "index " + std::to_string(index) + " beyond bounds; count " + std::to_string(bound));
}

void checkRange(const char *operation, NSRange range, NSUInteger count) {
    if (!range.fits(count))
        raise(NSRangeException, operation,
              "range {" + std::to_string(range.location) + ", " + std::to_string(range.length) +
                  "} extends beyond count " + std::to_string(count));
}

void checkArgument(const char *operation, bool valid, const char *fault) {
    if (!valid)
        raise(NSInvalidArgumentException, operation, fault);
}

void checkObject(const char *operation, const id &object) {
    checkArgument(operation, object != nullptr, "object cannot be nil");
}

std::vector<id> objectsOf(const Ref<NSArray> &array) {
    return array ? array->allObjects() : std::vector<id>();
}

} // namespace collections
