#include "Platform/Foundation/UniformType.h"

#include <gio/gio.h>
#include <memory>

namespace {
using OwnedText = std::unique_ptr<char, decltype(&g_free)>;
}

std::optional<std::string> preferredMIMETypeForExtension(const std::string &extension) {
    if (extension.find('/') != std::string::npos) // it would be looked up as a path
        return std::nullopt;
    const OwnedText type(g_content_type_guess(("name." + extension).c_str(), nullptr, 0, nullptr), g_free);
    if (!type || g_content_type_is_unknown(type.get()))
        return std::nullopt;
    const OwnedText mime(g_content_type_get_mime_type(type.get()), g_free);
    return mime ? std::optional<std::string>(mime.get()) : std::nullopt;
}
