// Letters and digits of ASCII, in bytes and in wider units, the same in every locale of the C library.
#pragma once

#pragma GCC visibility push(default)

namespace ascii {

template <class Unit>
constexpr bool isDigit(Unit unit) {
    return unit >= Unit{'0'} && unit <= Unit{'9'};
}

template <class Unit>
constexpr bool isUpperCase(Unit unit) {
    return unit >= Unit{'A'} && unit <= Unit{'Z'};
}

template <class Unit>
constexpr bool isLowerCase(Unit unit) {
    return unit >= Unit{'a'} && unit <= Unit{'z'};
}

template <class Unit>
constexpr bool isLetter(Unit unit) {
    return isUpperCase(unit) || isLowerCase(unit);
}

template <class Unit>
constexpr Unit lowerCase(Unit unit) {
    return isUpperCase(unit) ? static_cast<Unit>(unit - 'A' + 'a') : unit;
}

template <class Unit>
constexpr Unit upperCase(Unit unit) {
    return isLowerCase(unit) ? static_cast<Unit>(unit - 'a' + 'A') : unit;
}

} // namespace ascii

#pragma GCC visibility pop
