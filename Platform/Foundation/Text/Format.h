// Type-safe printf-style formatting with "%@" for objects: every argument carries its kind, so a directive
// that does not fit it prints the argument in its natural form instead of reading wild memory.
//
//     formatUTF16("%@ has %d pages", std::array<FormatArgument, 2>{title, 320});
//
// Directives: %@ %d %i %u %o %x %X %c %C %s %p %e %E %f %F %g %G %a %A %%, with flags, width and precision
// (both also as "*", and both at most 4096), the length modifiers hh h l ll q z t j and positions ("%2$@").
// As in C, an integer is truncated to the width of its directive: 32 bits without a modifier. "%@" prints an
// object's description and "(null)" for none; "%s" prints "(null)" for null. Numbers look the same in every
// locale, and not-a-number has no sign. Format texts are constants of ours: text from outside may only be an
// argument.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <concepts>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

#pragma GCC visibility push(default)

class FormatArgument {
public:
    enum class Kind { Signed, Unsigned, Floating, CString, Pointer, Object };

    template <std::integral T>
    FormatArgument(T value) : kind(std::is_signed_v<T> ? Kind::Signed : Kind::Unsigned) {
        integer = static_cast<std::uint64_t>(static_cast<std::int64_t>(value));
        if constexpr (std::is_unsigned_v<T>)
            integer = value;
    }
    template <class T>
    requires std::is_enum_v<T> FormatArgument(T value)
        : FormatArgument(static_cast<std::underlying_type_t<T>>(value)) {}
    FormatArgument(double value) : kind(Kind::Floating), floating(value) {}
    FormatArgument(const char *value) : kind(Kind::CString), text(value) {}
    FormatArgument(const void *value) : kind(Kind::Pointer), pointer(value) {}
    FormatArgument(Class value);
    template <std::derived_from<NSObject> T>
    FormatArgument(const Ref<T> &value) : kind(Kind::Object), object(value.get()) {}
    FormatArgument(std::nullptr_t) : kind(Kind::Object), object(nullptr) {}

    Kind kind;
    union {
        std::uint64_t integer;
        double floating;
        const char *text;
        const void *pointer;
        const NSObject *object;
    };
};

/// Receives formatted text piece by piece.
class FormatOutput {
public:
    virtual ~FormatOutput() = default;
    virtual void append(std::string_view utf8) = 0;
    virtual void append(std::u16string_view units) = 0;
};

/// Writes the text to `output`. Never fails: an unknown directive, or one without an argument, is copied.
void formatInto(FormatOutput &output, std::string_view format, std::span<const FormatArgument> arguments);

/// Appends the text to `out` as UTF-8. A lone surrogate in an object's text becomes U+FFFD.
void formatUTF8(std::string &out, std::string_view format, std::span<const FormatArgument> arguments);
/// The text as UTF-16. The code units of an object's text are copied unchanged, lone surrogates included.
std::u16string formatUTF16(std::string_view format, std::span<const FormatArgument> arguments);

#pragma GCC visibility pop
