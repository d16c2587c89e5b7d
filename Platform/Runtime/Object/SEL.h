// Selectors: interned names of operations, compared by address. They are kept for the life of the process.
//
// Threads: any.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

struct objc_selector {
    std::string name;
};
using SEL = const objc_selector *;

/// The one selector of that name, made on first use. For names that the program itself has.
SEL sel_registerName(std::string_view name);

/// The name with its colons, e.g. "fire:"; "<null selector>" for none.
const char *sel_getName(SEL selector);

namespace runtime {

/// The selector of that name, if there is one: no class has an operation of any other name.
SEL findSelector(std::string_view name);

/// For names from outside, which may be many and long: makes at most so many that all of them together take
/// `foreignSelectorBytes` of memory. Null for a name that is new from then on.
SEL registerForeignName(std::string_view name);
inline constexpr std::size_t foreignSelectorBytes = std::size_t{4} << 20;

} // namespace runtime
