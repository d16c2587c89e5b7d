#include "Platform/Foundation/System/Localization.h"

#include "Platform/Foundation/System/NSBundle.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Locking/Mutex.h"

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <libintl.h>
#include <set>
#include <string_view>

namespace {

std::string environment(const char *name) {
    const char *value = std::getenv(name);
    return value ? value : "";
}

std::string firstOf(std::initializer_list<const char *> names) {
    for (const char *name : names)
        if (std::string value = environment(name); !value.empty())
            return value;
    return {};
}

/// The list of languages, with each regional variety of Chinese followed by the catalogue in its script,
/// which is used when it has none of its own.
std::string withRelatives(const std::string &languages) {
    std::string result;
    for (std::size_t at = 0; at <= languages.size();) {
        const std::size_t end = std::min(languages.find(':', at), languages.size());
        const std::string language = languages.substr(at, end - at);
        const std::string place = language.substr(0, language.find_first_of(".@"));
        result += language + ":";
        if (place == "zh_HK" || place == "zh_MO")
            result += "zh_TW:";
        else if (place == "zh_SG" || place == "zh_MY" || place == "zh")
            result += "zh_CN:";
        at = end + 1;
    }
    return result;
}

/// Binds the table to the resource folder on its first use.
const char *domainOf(const std::string &table) {
    struct Domains {
        locking::Mutex lock;
        std::set<std::string> bound ZK_GUARDED_BY(lock);
    };
    static auto &domains = *new Domains;
    const locking::MutexLock guard(domains.lock);
    const auto [place, isNew] = domains.bound.insert(table);
    if (isNew) {
        if (const auto folder = NSBundle::mainBundle().pathForResource("locale", ""))
            bindtextdomain(table.c_str(), folder->c_str());
        bind_textdomain_codeset(table.c_str(), "UTF-8");
    }
    return place->c_str();
}

} // namespace

void NSLocalizationPrepare() {
    const std::string wanted = firstOf({"LC_ALL", "LC_MESSAGES", "LANG"});
    const std::string language = wanted.substr(0, wanted.find_first_of(".@"));
    const bool plain = language.empty() || language == "C" || language == "POSIX";
    if (!std::setlocale(LC_ALL, ""))
        std::setlocale(LC_ALL, "C.UTF-8");
    // gettext does not look at catalogues in the locale "C".
    const std::string messages = std::setlocale(LC_MESSAGES, nullptr);
    if (messages == "C" || messages == "POSIX")
        std::setlocale(LC_MESSAGES, "C.UTF-8");
    const std::string preferred = environment("LANGUAGE");
    const std::string own = !preferred.empty() ? preferred : plain ? std::string() : language;
    setenv("LANGUAGE", (own.empty() ? "en" : withRelatives(own) + "en").c_str(), 1);
}

std::string NSLocalizationLanguage() {
    static constexpr std::string_view field = "Language: ";
    const std::string_view header = dgettext(domainOf("Localizable"), "");
    const std::size_t at = header.find(field);
    if (at == std::string_view::npos)
        return "en";
    const std::string_view rest = header.substr(at + field.size());
    return std::string(rest.substr(0, rest.find('\n')));
}

Ref<NSString> NSLocalizedStringFromTable(const Ref<NSString> &key, const Ref<NSString> &value,
                                         const std::string &table) {
    const bool hasValue = value && value->length() > 0;
    if (!key || key->length() == 0) // for the empty key gettext returns the catalogue's header
        return hasValue ? value : NSString::string();
    const std::string identifier = key->utf8();
    const char *text = dgettext(domainOf(table), identifier.c_str());
    if (text == identifier.c_str())
        return hasValue ? value : key;
    return NSString::stringWithUTF8String(text);
}

Ref<NSString> NSLocalizedString(const Ref<NSString> &key) {
    return NSLocalizedStringFromTable(key, nullptr, "Localizable");
}
