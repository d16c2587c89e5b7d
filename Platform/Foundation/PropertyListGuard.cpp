#include "Platform/Foundation/PropertyListGuard.h"

#include "Platform/Foundation/NSPropertyListSerialization.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace {

constexpr unsigned deepest = NSPropertyListSerialization::deepestNesting;

/// Elements that are open around and in the deepest leaf: the list itself, the containers, the leaf.
constexpr unsigned mostOpenElements = deepest + 2;

constexpr std::size_t none = std::string_view::npos;

/// Where the tag that begins at `at` has its ">", quoted ones apart.
std::size_t endOfTag(std::string_view text, std::size_t at) {
    bool quoted = false;
    for (; at < text.size(); ++at)
        if (text[at] == '"')
            quoted = !quoted;
        else if (text[at] == '>' && !quoted)
            return at;
    return none;
}

/// What stands in angle brackets without being an element: where it ends, none when it is not such a thing.
std::optional<std::size_t> endOfAside(std::string_view text, std::size_t at) {
    static constexpr std::pair<std::string_view, std::string_view> asides[] = {
        {"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}};
    for (const auto &[opening, closing] : asides)
        if (text.substr(at).starts_with(opening)) {
            const std::size_t end = text.find(closing, at + opening.size());
            return end == none ? none : end + closing.size() - 1;
        }
    if (!text.substr(at).starts_with("<!"))
        return std::nullopt;
    const std::size_t end = endOfTag(text, at);
    return text.substr(at, end - at).find('[') == none ? end : none;
}

class BinaryList {
public:
    explicit BinaryList(std::string_view bytes) : bytes_(bytes) {}

    bool isHarmless() {
        if (bytes_.size() < headerSize + trailerSize)
            return false;
        const std::size_t trailer = bytes_.size() - trailerSize;
        offsetSize_ = byte(trailer + 6);
        referenceSize_ = byte(trailer + 7);
        const auto count = number(trailer + 8, 8), top = number(trailer + 16, 8);
        table_ = number(trailer + 24, 8);
        if (offsetSize_ < 1 || offsetSize_ > 8 || referenceSize_ < 1 || referenceSize_ > 8 ||
            table_ < headerSize || table_ > trailer || count > (trailer - table_) / offsetSize_)
            return false;
        measures_.resize(count);
        return measure(top, 0) && measures_[top].weight <= mostFree + 32 * bytes_.size();
    }

private:
    static constexpr std::size_t headerSize = 8, trailerSize = 32;
    static constexpr std::uint64_t mostFree = 64 << 20;
    /// About what an object costs beside its bytes.
    static constexpr std::uint64_t overhead = 32;

    /// What an object holds, shared parts counted each time; a weight of 0 is not known yet.
    struct Measure {
        std::uint64_t weight = 0;
        unsigned height = 0;    ///< levels of containers
        bool holdsZero = false; ///< a text with the character 0, which libplist cannot have for a key
    };

    struct Object {
        std::size_t contents; ///< where they begin
        std::uint64_t length; ///< in bytes
        unsigned kind;

        bool isDictionary() const { return kind == 0xD; }
        bool holdsReferences() const { return kind == 0xA || isDictionary(); }
    };

    unsigned byte(std::size_t at) const { return static_cast<unsigned char>(bytes_[at]); }

    std::uint64_t number(std::size_t at, std::size_t size) const {
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < size; ++i)
            value = value << 8 | byte(at + i);
        return value;
    }

    /// The object in the table's place `index`, which exists; none when it does not lie within the bytes.
    std::optional<Object> object(std::uint64_t index) const {
        std::uint64_t at = number(table_ + index * offsetSize_, offsetSize_);
        if (at < headerSize || at >= table_)
            return std::nullopt;
        const unsigned kind = byte(at) >> 4;
        if (std::string_view("\0\1\2\3\4\5\6\x8\xA\xD", 10).find(static_cast<char>(kind)) == none)
            return std::nullopt;
        std::uint64_t length = byte(at++) & 15;
        if (kind < 4 || kind == 8) // scalars: a flag, a power of two, or one less than the bytes
            length = kind == 0 ? 0 : kind == 8 ? length + 1 : std::uint64_t{1} << length;
        else if (length == 15) { // a number of its own follows
            if (at >= table_ || byte(at) < 0x10 || byte(at) > 0x13)
                return std::nullopt;
            const std::size_t size = std::size_t{1} << (byte(at++) & 15);
            if (size > table_ - at)
                return std::nullopt;
            length = number(at, size);
            at += size;
        }
        if (kind == 8 && length > 8)
            return std::nullopt;
        const bool array = kind == 0xA, dictionary = kind == 0xD;
        const std::uint64_t unit = array        ? referenceSize_
                                   : dictionary ? 2 * referenceSize_
                                   : kind == 6  ? 2
                                                : 1;
        if (length > (table_ - at) / unit)
            return std::nullopt;
        return Object{at, length * unit, kind};
    }

    bool holdsZero(const Object &text) const {
        const std::size_t unit = text.kind == 5 ? 1 : 2;
        for (std::size_t at = text.contents; at < text.contents + text.length; at += unit)
            if (number(at, unit) == 0)
                return true;
        return false;
    }

    /// False when the object, in `depth` containers, or one that it holds is hostile.
    bool measure(std::uint64_t index, unsigned depth) {
        if (index >= measures_.size())
            return false;
        if (measures_[index].weight)
            return depth + measures_[index].height <= deepest;
        const auto found = object(index);
        if (!found || (found->holdsReferences() && depth == deepest))
            return false;
        Measure whole{overhead + found->length, found->holdsReferences()};
        if (found->kind == 5 || found->kind == 6)
            whole.holdsZero = holdsZero(*found);
        for (std::uint64_t i = 0; found->holdsReferences() && i < found->length; i += referenceSize_) {
            const auto part = number(found->contents + i, referenceSize_);
            if (!measure(part, depth + 1))
                return false;
            if (found->isDictionary() && i < found->length / 2 && measures_[part].holdsZero)
                return false;
            constexpr std::uint64_t tooMuch = std::uint64_t{1} << 62;
            whole.weight = std::min(tooMuch, whole.weight + measures_[part].weight);
            whole.height = std::max(whole.height, measures_[part].height + 1);
        }
        measures_[index] = whole;
        return true;
    }

    const std::string_view bytes_;
    std::size_t offsetSize_ = 0;
    std::size_t referenceSize_ = 0;
    std::size_t table_ = 0; ///< where the offsets of the objects begin
    std::vector<Measure> measures_;
};

} // namespace

bool isHarmlessXMLPropertyList(std::string_view text) {
    unsigned open = 0;
    for (std::size_t at = 0; (at = text.find('<', at)) != none; ++at) {
        const auto aside = endOfAside(text, at);
        const std::size_t end = aside ? *aside : endOfTag(text, at);
        if (end == none)
            return false;
        const bool closing = text[at + 1] == '/', empty = text[end - 1] == '/';
        at = end;
        if (aside || (empty && !closing))
            continue;
        if (closing)
            open -= open > 0;
        else if (++open > mostOpenElements)
            return false;
    }
    return true;
}

std::string xmlInShortTexts(std::string_view text) {
    constexpr std::size_t longest = 4096; // bytes, up to the end of the reference there
    std::string out;
    out.reserve(text.size());
    while (!text.empty()) {
        const auto aside = endOfAside(text, 0);
        std::size_t end = aside ? *aside + 1 : text[0] == '<' ? endOfTag(text, 0) + 1 : text.find('<');
        end = std::min(end, text.size());
        const std::size_t cut = text[0] == '<' ? none : text.substr(0, end).find(';', longest);
        if (cut == none) {
            out += text.substr(0, end);
        } else {
            end = cut + 1;
            out.append(text.substr(0, end)).append("<!---->");
        }
        text.remove_prefix(end);
    }
    return out;
}

bool isHarmlessBinaryPropertyList(std::string_view bytes) {
    return BinaryList(bytes).isHarmless();
}
