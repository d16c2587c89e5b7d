#include "Platform/Foundation/System/UniformType.h"

#include <gio/gio.h>
#include <memory>

namespace {
using OwnedText = std::unique_ptr<char, decltype(&g_free)>;
}

std::optional<std::string> preferredMIMETypeForExtension(const std::string &extension) {
    constexpr std::string_view foreign("/\0",
                                       2); // the database would read the name as a path, or stop at NUL
    if (extension.find_first_of(foreign) != std::string::npos)
        return std::nullopt;
    const OwnedText type(g_content_type_guess(("name." + extension).c_str(), nullptr, 0, nullptr), g_free);
    if (!type || g_content_type_is_unknown(type.get()))
        return std::nullopt;
    const OwnedText mime(g_content_type_get_mime_type(type.get()), g_free);
    return mime ? std::optional<std::string>(mime.get()) : std::nullopt;
}
