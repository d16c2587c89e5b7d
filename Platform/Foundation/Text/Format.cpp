#include "Platform/Foundation/Text/Format.h"

#include "Platform/Ascii/Ascii.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Foundation/Text/Unicode.h"
#include "Platform/Runtime/Object/Class.h" // IWYU pragma: keep: it is the complete type

#include <algorithm>
#include <array>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <locale.h>
#include <optional>

FormatArgument::FormatArgument(Class value) : kind(Kind::Object), object(value) {}

namespace {

// Bounds the memory that a width or precision passed as an argument can take.
constexpr int widestField = 4096;

/// Switches this thread to the locale "C" while it lives, so that snprintf writes no decimal commas.
class PlainLocale {
public:
    PlainLocale() {
        static const locale_t plain = newlocale(LC_ALL_MASK, "C", nullptr);
        previous_ = uselocale(plain);
    }
    PlainLocale(const PlainLocale &) = delete;
    PlainLocale &operator=(const PlainLocale &) = delete;
    ~PlainLocale() { uselocale(previous_); }

private:
    locale_t previous_;
};

/// One directive of a format text, parsed.
struct Directive {
    std::string flags;
    int width = 0;
    int precision = -1; ///< negative when there is none
    std::string length;
    char conversion = 0;
};

class Formatter {
public:
    Formatter(FormatOutput &output, std::string_view format, std::span<const FormatArgument> arguments)
        : output_(output), format_(format), arguments_(arguments) {}

    void run() {
        while (at_ < format_.size()) {
            const std::size_t percent = std::min(format_.find('%', at_), format_.size());
            if (percent > at_)
                output_.append(format_.substr(at_, percent - at_));
            at_ = percent;
            if (at_ < format_.size())
                directive();
        }
    }

private:
    void directive() {
        const std::size_t start = at_++;
        Directive parsed;
        const std::size_t position = takePosition();
        while (at_ < format_.size() && std::string_view("-+ #0").find(format_[at_]) != std::string_view::npos)
            parsed.flags += format_[at_++];
        parsed.width = takeNumber().value_or(0);
        if (parsed.width < 0) { // a negative "*" means left-justified
            parsed.flags += '-';
            parsed.width = -parsed.width;
        }
        if (take('.'))
            parsed.precision = takeNumber().value_or(0); // a negative "*" means none
        while (at_ < format_.size() &&
               std::string_view("hlqzjtL").find(format_[at_]) != std::string_view::npos)
            parsed.length += format_[at_++];
        parsed.conversion = at_ < format_.size() ? format_[at_++] : '\0';
        if (parsed.conversion == '%') {
            output_.append(std::string_view("%"));
            return;
        }
        const FormatArgument *argument = nullptr;
        if (std::string_view("@diuoxXcCspeEfFgGaA").find(parsed.conversion) != std::string_view::npos)
            argument = at(position ? position - 1 : next_++);
        if (argument)
            return print(parsed, *argument);
        while (at_ < format_.size() && (format_[at_] & 0xC0) == 0x80) // never cuts a character in two
            ++at_;
        output_.append(format_.substr(start, at_ - start));
    }

    /// Consumes "2$" and returns 2; returns 0 and consumes nothing otherwise.
    std::size_t takePosition() {
        std::size_t end = at_, value = 0;
        while (end < format_.size() && ascii::isDigit(format_[end]) && value < 1000)
            value = value * 10 + static_cast<std::size_t>(format_[end++] - '0');
        if (value == 0 || end >= format_.size() || format_[end] != '$')
            return 0;
        at_ = end + 1;
        return value;
    }

    bool take(char character) {
        if (at_ >= format_.size() || format_[at_] != character)
            return false;
        ++at_;
        return true;
    }

    /// The value of digits, or of the argument for "*" if that is an integer.
    std::optional<int> takeNumber() {
        if (take('*')) {
            const FormatArgument *argument = at(next_++);
            if (!argument || (argument->kind != FormatArgument::Kind::Signed &&
                              argument->kind != FormatArgument::Kind::Unsigned))
                return std::nullopt;
            const auto value = static_cast<std::int64_t>(argument->integer);
            return static_cast<int>(std::clamp<std::int64_t>(value, -widestField, widestField));
        }
        std::optional<int> value;
        while (at_ < format_.size() && ascii::isDigit(format_[at_]))
            value = std::min(value.value_or(0) * 10 + (format_[at_++] - '0'), widestField);
        return value;
    }

    const FormatArgument *at(std::size_t index) const {
        return index < arguments_.size() ? &arguments_[index] : nullptr;
    }

    void print(const Directive &parsed, const FormatArgument &argument) {
        switch (argument.kind) {
        case FormatArgument::Kind::Object:
            return printObject(parsed, argument.object);
        case FormatArgument::Kind::CString:
            return printText(parsed, argument.text ? argument.text : "(null)");
        case FormatArgument::Kind::Pointer:
            return printPointer(parsed, argument.pointer);
        case FormatArgument::Kind::Floating:
            return printFloating(parsed, argument.floating);
        case FormatArgument::Kind::Signed:
        case FormatArgument::Kind::Unsigned:
            return printInteger(parsed, argument);
        }
    }

    void printObject(const Directive &parsed, const NSObject *object) {
        if (parsed.conversion == 'p')
            return printPointer(parsed, object);
        if (!object)
            return printText(parsed, "(null)");
        const Ref<NSString> text = descriptionOf(*object);
        pad(parsed, text->length(), true);
        output_.append(std::u16string_view(text->units()));
        pad(parsed, text->length(), false);
    }

    void printText(const Directive &parsed, const char *text) {
        std::size_t length = 0;
        const std::size_t limit =
            parsed.precision < 0 ? SIZE_MAX : static_cast<std::size_t>(parsed.precision);
        while (length < limit && text[length])
            ++length;
        pad(parsed, length, true);
        output_.append(std::string_view(text, length));
        pad(parsed, length, false);
    }

    void pad(const Directive &parsed, std::size_t length, bool before) {
        const bool left = parsed.flags.find('-') != std::string::npos;
        if (left != before)
            for (auto i = length; i < static_cast<std::size_t>(parsed.width); ++i)
                output_.append(std::string_view(" "));
    }

    void printFloating(const Directive &parsed, double value) {
        const bool fits = std::string_view("eEfFgGaA").find(parsed.conversion) != std::string_view::npos;
        const PlainLocale plain;
        printNumber(parsed, fits ? std::string(1, parsed.conversion) : "g",
                    std::isnan(value) ? std::abs(value) : value);
    }

    void printInteger(const Directive &parsed, const FormatArgument &argument) {
        switch (parsed.conversion) {
        case 'd':
        case 'i':
            if (std::optional<std::string_view> plain =
                    plainDecimal(parsed, narrowSigned(parsed, argument.integer)))
                return output_.append(*plain);
            return printNumber(parsed, "lld", static_cast<long long>(narrowSigned(parsed, argument.integer)));
        case 'u':
        case 'o':
        case 'x':
        case 'X':
            return printNumber(parsed, std::string("ll") + parsed.conversion,
                               static_cast<unsigned long long>(narrowUnsigned(parsed, argument.integer)));
        case 'c':
        case 'C':
            return printCharacter(parsed, static_cast<char16_t>(argument.integer));
        case 'p':
            // NOLINTNEXTLINE(performance-no-int-to-ptr): it was one before
            return printPointer(parsed, reinterpret_cast<const void *>(argument.integer));
        default:
            if (argument.kind == FormatArgument::Kind::Signed)
                return printNumber(parsed, "lld", static_cast<long long>(argument.integer));
            return printNumber(parsed, "llu", static_cast<unsigned long long>(argument.integer));
        }
    }

    static bool isPlain(const Directive &parsed) {
        return parsed.flags.empty() && parsed.width == 0 && parsed.precision < 0;
    }

    /// Without flags and width it does not use snprintf, like `plainDecimal`.
    void printPointer(const Directive &parsed, const void *value) {
        if (!value || !isPlain(parsed))
            return printNumber(parsed, "p", value);
        const auto address = reinterpret_cast<std::uintptr_t>(value);
        const auto end = std::to_chars(digits_.data(), digits_.data() + digits_.size(), address, 16).ptr;
        output_.append(std::string_view("0x"));
        output_.append(std::string_view(digits_.data(), static_cast<std::size_t>(end - digits_.data())));
    }

    /// The digits without snprintf; nothing for a directive with flags, width or precision.
    std::optional<std::string_view> plainDecimal(const Directive &parsed, std::int64_t value) {
        if (!isPlain(parsed))
            return std::nullopt;
        const auto end = std::to_chars(digits_.data(), digits_.data() + digits_.size(), value).ptr;
        return std::string_view(digits_.data(), static_cast<std::size_t>(end - digits_.data()));
    }

    static std::int64_t narrowSigned(const Directive &parsed, std::uint64_t value) {
        if (parsed.length == "hh")
            return static_cast<std::int8_t>(value);
        if (parsed.length == "h")
            return static_cast<std::int16_t>(value);
        return parsed.length.empty() ? static_cast<std::int32_t>(value) : static_cast<std::int64_t>(value);
    }

    static std::uint64_t narrowUnsigned(const Directive &parsed, std::uint64_t value) {
        if (parsed.length == "hh")
            return static_cast<std::uint8_t>(value);
        if (parsed.length == "h")
            return static_cast<std::uint16_t>(value);
        return parsed.length.empty() ? static_cast<std::uint32_t>(value) : value;
    }

    void printCharacter(const Directive &parsed, char16_t unit) {
        if (parsed.conversion == 'c')
            unit &= 0xFF;
        pad(parsed, 1, true);
        output_.append(std::u16string_view(&unit, 1));
        pad(parsed, 1, false);
    }

    template <class T>
    void printNumber(const Directive &parsed, const std::string &conversion, T value) {
        std::string directive = "%" + parsed.flags;
        if (parsed.width > 0)
            directive += std::to_string(parsed.width);
        if (parsed.precision >= 0)
            directive += "." + std::to_string(parsed.precision);
        directive += conversion;
        std::string text(512, '\0');
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
        auto length = std::snprintf(text.data(), text.size(), directive.c_str(), value);
        if (length >= static_cast<int>(text.size())) {
            text.resize(static_cast<std::size_t>(length) + 1);
            length = std::snprintf(text.data(), text.size(), directive.c_str(), value);
        }
#pragma GCC diagnostic pop
        output_.append(std::string_view(text).substr(0, static_cast<std::size_t>(std::max(length, 0))));
    }

    FormatOutput &output_;
    std::string_view format_;
    std::span<const FormatArgument> arguments_;
    std::size_t at_ = 0;
    std::size_t next_ = 0;
    std::array<char, 24> digits_{};
};

class UTF8Output final : public FormatOutput {
public:
    explicit UTF8Output(std::string &out) : out_(out) {}
    void append(std::string_view utf8) override { out_ += utf8; }
    void append(std::u16string_view units) override { unicode::appendUTF8(out_, units); }

private:
    std::string &out_;
};

class UTF16Output final : public FormatOutput {
public:
    explicit UTF16Output(std::u16string &out) : out_(out) {}
    void append(std::string_view utf8) override { unicode::appendUTF16(out_, utf8); }
    void append(std::u16string_view units) override { out_ += units; }

private:
    std::u16string &out_;
};

} // namespace

void formatInto(FormatOutput &output, std::string_view format, std::span<const FormatArgument> arguments) {
    Formatter(output, format, arguments).run();
}

void formatUTF8(std::string &out, std::string_view format, std::span<const FormatArgument> arguments) {
    UTF8Output output(out);
    formatInto(output, format, arguments);
}

std::u16string formatUTF16(std::string_view format, std::span<const FormatArgument> arguments) {
    std::u16string units;
    UTF16Output output(units);
    formatInto(output, format, arguments);
    return units;
}
