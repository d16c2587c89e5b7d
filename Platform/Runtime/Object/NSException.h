// What the platform raises when an argument breaks an operation's contract. Only the platform raises.
#pragma once

#include <stdexcept>
#include <string>

inline constexpr const char *NSRangeException = "NSRangeException";
inline constexpr const char *NSInvalidArgumentException = "NSInvalidArgumentException";
inline constexpr const char *NSGenericException = "NSGenericException";
inline constexpr const char *NSUnknownKeyException = "NSUnknownKeyException";

class NSException : public std::runtime_error {
public:
    NSException(std::string name, const std::string &reason)
        : std::runtime_error(reason), name_(std::move(name)) {}

    /// One of the names above.
    const std::string &name() const { return name_; }
    /// A sentence for developers.
    std::string reason() const { return what(); }

private:
    std::string name_;
};
