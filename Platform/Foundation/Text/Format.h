// printf-style formatting with "%@" for objects, safe in types: every argument carries its own kind, so a
// directive that does not fit prints the argument in its natural form instead of reading wild memory.
//
// Directives: %@ %d %i %u %o %x %X %c %C %s %p %e %E %f %F %g %G %a %A %%, with flags, width, precision (both
// also as "*"), the length modifiers hh h l ll q z t j (an integer is cut to that width, as C does) and
// positions ("%2$@"). "%@" prints an object's description and "(null)" for none; "%s" prints "(null)" for
// null. Numbers look the same in every locale, and not-a-number has no sign. Format texts are ours and
// constant: foreign text is only ever an argument.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <concepts>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

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

/// Where formatted text goes, piece by piece.
class FormatOutput {
public:
    virtual ~FormatOutput() = default;
    virtual void append(std::string_view utf8) = 0;
    virtual void append(std::u16string_view units) = 0;
};

/// Writes the text to `output`. Never fails: a directive without an argument stays as it stands.
void formatInto(FormatOutput &output, std::string_view format, std::span<const FormatArgument> arguments);

/// The text as UTF-8 appended to `out`.
void formatUTF8(std::string &out, std::string_view format, std::span<const FormatArgument> arguments);
/// The text as UTF-16; units of objects' texts pass unchanged, surrogates that stand alone included.
std::u16string formatUTF16(std::string_view format, std::span<const FormatArgument> arguments);
