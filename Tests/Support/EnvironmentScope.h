// Another value of a variable of the environment for the length of a scope; null for none.
#pragma once

#include "Tests/Support/Testing.h"

class EnvironmentScope : NoCopies {
public:
    EnvironmentScope(const char *name, const char *value) : name_(name) { set(value); }
    ~EnvironmentScope() { set(before_ ? before_->c_str() : nullptr); }

private:
    std::optional<std::string> current() const {
        const char *value = std::getenv(name_);
        return value ? std::optional<std::string>(value) : std::nullopt;
    }
    void set(const char *value) const { value ? ::setenv(name_, value, 1) : ::unsetenv(name_); }

    const char *const name_;
    const std::optional<std::string> before_ = current();
};
