// Another current locale for the length of a scope.
#pragma once

#include <string>
#include <unicode/uloc.h>

class LocaleScope {
public:
    explicit LocaleScope(const char *identifier) { set(identifier); }
    ~LocaleScope() { set(before_.c_str()); }
    LocaleScope(const LocaleScope &) = delete;
    LocaleScope &operator=(const LocaleScope &) = delete;

private:
    static void set(const char *identifier) {
        UErrorCode status = U_ZERO_ERROR;
        uloc_setDefault(identifier, &status);
    }

    const std::string before_ = uloc_getDefault();
};
