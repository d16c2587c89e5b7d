// What the platform raises when a call breaks an operation's contract, or when the system denies it a
// resource that it needs. Only the platform raises it.
#pragma once

#include <stdexcept>
#include <string>

#pragma GCC visibility push(default)

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

namespace runtime {

/// As texts name it: a method, which has a blank in it, in brackets, a function as it is.
inline std::string operationText(const std::string &operation) {
    return operation.find(' ') == operation.npos ? operation : "-[" + operation + "]";
}

/// NSInvalidArgumentException, with the name of the operation, for a block, a comparator or a function of
/// none: nobody could run it. Other callables are always there.
template <class Block>
void checkBlock(const char *operation, const Block &block) {
    if constexpr (requires { static_cast<bool>(block); })
        if (!static_cast<bool>(block))
            throw NSException(NSInvalidArgumentException, operationText(operation) + ": block cannot be nil");
}

} // namespace runtime

#pragma GCC visibility pop
