#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Diagnosis/JSONPath.h"

#include "Platform/Foundation/Serialization/JSON/JSONEscapes.h"

#include <algorithm>
#include <optional>

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// Steps over the parts of a valid text.
class Scanner {
public:
    explicit Scanner(std::string_view text) : text_(text) {
        if (text_.starts_with(byteOrderMark))
            at_ = byteOrderMark.size();
        skipBlanks();
    }

    std::size_t at() const { return at_; }

    /// Goes to what the container that begins here has there; false, and to anywhere, when there is nothing.
    bool enter(const qn::JSONStep &step) {
        const auto *key = std::get_if<std::string>(&step);
        return key ? enterObject(*key) : enterArray(std::get<std::size_t>(step));
    }
    void goTo(std::size_t offset) { at_ = offset; }

private:
    char here() const { return at_ < text_.size() ? text_[at_] : '\0'; }

    void skipBlanks() { at_ = std::min(text_.find_first_not_of(" \t\r\n", at_), text_.size()); }
    /// Also over the blanks behind it.
    void skip(std::size_t length = 1) {
        at_ = std::min(at_ + length, text_.size());
        skipBlanks();
    }

    /// From its opening quote on; returns what is between the quotes.
    std::string_view skipString() {
        const std::size_t begin = at_ + 1;
        std::size_t end = begin;
        while (end < text_.size() && text_[end] != '"')
            end += text_[end] == '\\' ? 2u : 1u;
        end = std::min(end, text_.size());
        at_ = end;
        skip();
        return text_.substr(begin, end - begin);
    }

    void skipValue() {
        std::size_t open = 0;
        do {
            if (here() == '"')
                skipString();
            else {
                open += here() == '{' || here() == '[' ? 1u : 0u;
                open -= here() == '}' || here() == ']' ? 1u : 0u;
                const bool isMark = std::string_view("{}[],:").find(here()) != std::string_view::npos;
                skip(isMark ? 1 : std::min(text_.find_first_of("{}[],:\" \t\r\n", at_), text_.size()) - at_);
            }
        } while (open > 0 && at_ < text_.size());
    }

    bool enterObject(const std::string &key) {
        if (here() != '{')
            return false;
        std::optional<std::size_t> found;
        for (skip(); here() == '"'; skipComma()) {
            const bool isIt = isKey(skipString(), key);
            skip(); // the colon
            if (isIt)
                found = at_;
            skipValue();
        }
        goTo(found.value_or(at_));
        return found.has_value();
    }

    bool enterArray(std::size_t index) {
        if (here() != '[')
            return false;
        for (skip(); here() != ']' && at_ < text_.size(); skipComma()) {
            if (index-- == 0)
                return true;
            skipValue();
        }
        return false;
    }

    void skipComma() {
        if (here() == ',')
            skip();
    }

    static bool isKey(std::string_view written, const std::string &key) {
        if (written.find('\\') == written.npos)
            return written == key;
        std::string unescaped(written.size(), '\0');
        const auto length = unescapeJSON(std::string(written) + '"', unescaped.data());
        return length && std::string_view(unescaped).substr(0, length->made) == key;
    }

    const std::string_view text_;
    std::size_t at_ = 0;
};

} // namespace

std::string qn::textOf(const JSONPath &path) {
    std::string text;
    for (const JSONStep &step : path)
        if (const auto *key = std::get_if<std::string>(&step))
            text.append(text.empty() ? "" : ".").append(*key);
        else
            text.append("[").append(std::to_string(std::get<std::size_t>(step))).append("]");
    return text;
}

std::size_t qn::offsetOf(std::string_view text, const JSONPath &path) {
    Scanner scanner(text);
    for (const JSONStep &step : path) {
        const std::size_t before = scanner.at();
        if (!scanner.enter(step)) {
            scanner.goTo(before);
            break;
        }
    }
    return scanner.at();
}

qn::JSONPlace qn::placeAt(std::string_view text, std::size_t offset) {
    std::string_view before = text.substr(0, offset);
    if (before.starts_with(byteOrderMark))
        before.remove_prefix(byteOrderMark.size());
    const std::size_t lineEnd = before.rfind('\n'); // npos + 1 is 0
    const auto isFirstByte = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; };
    const auto lines = std::ranges::count(before, '\n'),
               columns = std::ranges::count_if(before.substr(lineEnd + 1), isFirstByte);
    return {static_cast<std::size_t>(lines) + 1, static_cast<std::size_t>(columns) + 1};
}
