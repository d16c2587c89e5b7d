#include "Platform/Foundation/System/URLParts.h"

#include "Platform/Ascii/HexDigit.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <string>

namespace {

using Text = std::u16string_view;

// Kinds of characters; one bit each, so that sets of them can be combined.
constexpr unsigned letter = 1, digit = 2, mark = 4, delimiter = 8, colon = 16, at = 32, slash = 64,
                   question = 128;
constexpr unsigned unreserved = letter | digit | mark;
constexpr unsigned inNames = unreserved | delimiter;

constexpr auto kinds = [] {
    std::array<unsigned, 0x80> made{};
    const auto set = [&](Text units, unsigned kind) {
        for (const char16_t unit : units)
            made[unit] = kind;
    };
    set(u"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ", letter);
    set(u"0123456789", digit);
    set(u"-._~", mark);
    set(u"!$&'()*+,;=", delimiter);
    set(u":", colon);
    set(u"@", at);
    set(u"/", slash);
    set(u"?", question);
    return made;
}();

bool isOf(unsigned allowed, char16_t unit) {
    return unit < kinds.size() && (kinds[unit] & allowed);
}

bool areOf(unsigned allowed, Text text) {
    return std::all_of(text.begin(), text.end(), [allowed](char16_t unit) { return isOf(allowed, unit); });
}

/// Whether the text consists of characters of those kinds and of percent escapes.
bool mayBe(unsigned allowed, Text text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (isOf(allowed, text[i]))
            continue;
        if (text[i] != u'%' || text.size() - i < 3 || !ascii::hexDigitValue(text[i + 1]) ||
            !ascii::hexDigitValue(text[i + 2]))
            return false;
        i += 2;
    }
    return true;
}

bool isScheme(Text text) {
    return isOf(letter, text.front()) && std::all_of(text.begin(), text.end(), [](char16_t unit) {
               return isOf(letter | digit, unit) || unit == u'+' || unit == u'-' || unit == u'.';
           });
}

bool isIPv6Address(Text text) {
    in6_addr address;
    return areOf(inNames | colon, text) &&
           inet_pton(AF_INET6, std::string(text.begin(), text.end()).c_str(), &address) == 1;
}

/// The address in brackets: "fe80::1", "fe80::1%25eth0" or of a future version, "v1.fe80::1+eth0".
bool isAddress(Text text) {
    if (text.starts_with(u'v') || text.starts_with(u'V')) {
        const std::size_t dot = std::min(text.find(u'.'), text.size());
        const Text version = text.substr(1, dot - 1), address = text.substr(std::min(dot + 1, text.size()));
        return !version.empty() && !address.empty() && areOf(inNames | colon, address) &&
               std::all_of(version.begin(), version.end(),
                           [](char16_t unit) { return ascii::hexDigitValue(unit); });
    }
    const std::size_t zone = text.find(u"%25");
    return isIPv6Address(text.substr(0, zone)) &&
           (zone == text.npos || (zone + 3 < text.size() && mayBe(unreserved, text.substr(zone + 3))));
}

/// "user:password@host:port", where all but the host are optional and the host may be empty.
bool isAuthority(Text text) {
    if (const std::size_t user = text.find(u'@'); user != text.npos) {
        if (!mayBe(inNames | colon, text.substr(0, user)))
            return false;
        text.remove_prefix(user + 1);
    }
    std::size_t end = std::min(text.find(u':'), text.size());
    if (text.starts_with(u'[')) {
        const std::size_t bracket = text.find(u']');
        if (bracket == text.npos || !isAddress(text.substr(1, bracket - 1)))
            return false;
        end = bracket + 1;
    } else if (!mayBe(inNames, text.substr(0, end))) {
        return false;
    }
    const Text port = text.substr(end);
    return port.empty() || (port.front() == u':' && areOf(digit, port.substr(1)));
}

} // namespace

URLParts::URLParts(Text text) {
    if (const std::size_t end = text.find_first_of(u":/?#");
        end != text.npos && end > 0 && text[end] == u':') {
        scheme = text.substr(0, end);
        text.remove_prefix(end + 1);
    }
    const auto cut = [&text](std::size_t end) {
        const Text part = text.substr(0, end);
        text.remove_prefix(part.size());
        return part;
    };
    if (text.starts_with(u"//")) {
        text.remove_prefix(2);
        authority = cut(text.find_first_of(u"/?#"));
    }
    path = cut(text.find_first_of(u"?#"));
    if (text.starts_with(u'?'))
        query = cut(text.find(u'#')).substr(1);
    if (text.starts_with(u'#'))
        fragment = text.substr(1);
}

bool URLParts::areValid() const {
    constexpr unsigned inPaths = inNames | colon | at | slash;
    // Without a scheme, the text before a colon in the first segment would be taken for one.
    const bool pathFits = scheme || authority || path.substr(0, path.find(u'/')).find(u':') == path.npos;
    return pathFits && (!scheme || isScheme(*scheme)) && (!authority || isAuthority(*authority)) &&
           mayBe(inPaths, path) && mayBe(inPaths | question, query.value_or(Text())) &&
           mayBe(inPaths | question, fragment.value_or(Text()));
}
