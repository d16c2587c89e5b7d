// The C++ types of numbers by the characters that encode them:
//
// | B      | c C s S i I q Q                    | f d D                            |
// |--------|------------------------------------|----------------------------------|
// | `bool` | `std::int8_t` … `std::uint64_t`    | `float`, `double`, `long double` |
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string_view>

#pragma GCC visibility push(default)

namespace runtime {

inline constexpr std::string_view numberEncodings = "BcCsSiIqQfdD";

template <class T>
requires std::integral<T> || std::floating_point<T>
constexpr char numberEncoding() {
    if constexpr (std::same_as<T, bool>)
        return 'B';
    else if constexpr (std::floating_point<T>)
        return sizeof(T) == sizeof(float) ? 'f' : std::same_as<T, double> ? 'd' : 'D';
    else
        return std::string_view(std::signed_integral<T> ? " cs i   q" : " CS I   Q")[sizeof(T)];
}

/// Calls `visit.operator()<T>()` with the type of a number and returns what it returns. `encoding` is one of
/// `numberEncodings`.
template <class Visit>
decltype(auto) withNumberType(char encoding, const Visit &visit) {
    switch (encoding) {
    case 'B':
        return visit.template operator()<bool>();
    case 'c':
        return visit.template operator()<std::int8_t>();
    case 'C':
        return visit.template operator()<std::uint8_t>();
    case 's':
        return visit.template operator()<std::int16_t>();
    case 'S':
        return visit.template operator()<std::uint16_t>();
    case 'i':
        return visit.template operator()<std::int32_t>();
    case 'I':
        return visit.template operator()<std::uint32_t>();
    case 'q':
        return visit.template operator()<std::int64_t>();
    case 'Q':
        return visit.template operator()<std::uint64_t>();
    case 'f':
        return visit.template operator()<float>();
    case 'd':
        return visit.template operator()<double>();
    default:
        return visit.template operator()<long double>();
    }
}

} // namespace runtime

#pragma GCC visibility pop
