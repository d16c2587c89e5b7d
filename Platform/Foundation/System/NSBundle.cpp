#include "Platform/Foundation/System/NSBundle.h"

#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/System/NameBelowFolder.h"

#include <filesystem>

const NSBundle &NSBundle::mainBundle() {
    static const NSBundle bundle;
    return bundle;
}

std::optional<std::string> NSBundle::pathForResource(const std::string &name, const std::string &type) const {
    const std::string file = type.empty() ? name : name + "." + type;
    if (!isNameBelowFolder(file))
        return std::nullopt;
    std::error_code error;
    const auto folder = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    for (const auto &place : {folder / "Resources", folder.parent_path() / "share/zkutility"})
        if (std::filesystem::exists(place / file, error))
            return (place / file).string();
    return std::nullopt;
}

Ref<NSData> NSBundle::dataForResource(const std::string &name, const std::string &type) const {
    const auto path = pathForResource(name, type);
    return path ? NSData::dataWithContentsOfFile(*path) : nullptr;
}
