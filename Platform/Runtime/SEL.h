// Selectors: interned names of operations, compared by address.
#pragma once

#include <string>
#include <string_view>

struct objc_selector {
    std::string name;
};
using SEL = const objc_selector *;

/// The one selector of that name, made on first use. Any thread.
SEL sel_registerName(std::string_view name);

/// The name with its colons, e.g. "fire:"; "<null selector>" for none.
const char *sel_getName(SEL selector);
