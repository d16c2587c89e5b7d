// Selectors: interned names of operations, compared by address. They live as long as the process.
//
// Threads: every call is safe from every thread.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#pragma GCC visibility push(default)

struct objc_selector {
    std::string name;
};
using SEL = const objc_selector *;

/// The one selector of that name, made on first use. Only for names of the program's own, since selectors are
/// never freed.
SEL sel_registerName(std::string_view name);

/// The name with its colons, e.g. "fire:"; "<null selector>" for none.
const char *sel_getName(SEL selector);

namespace runtime {

/// The selector of that name; null without one, and then no class has an operation of that name.
SEL findSelector(std::string_view name);

/// Like `sel_registerName`, for names from outside: all new ones together take at most `foreignSelectorBytes`
/// of memory. Null for a new name that does not fit.
SEL registerForeignName(std::string_view name);
inline constexpr std::size_t foreignSelectorBytes = std::size_t{4} << 20;

} // namespace runtime

#pragma GCC visibility pop
