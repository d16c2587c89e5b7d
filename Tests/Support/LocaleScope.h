// Another current locale for the length of a scope.
#pragma once

#include "Tests/Support/EnvironmentScope.h"

class LocaleScope {
public:
    explicit LocaleScope(const char *identifier) : variable_("LC_ALL", identifier) {}

private:
    const EnvironmentScope variable_;
};
