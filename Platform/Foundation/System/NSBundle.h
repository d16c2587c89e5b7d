// The program's own resources: the files that ship beside it.
//
// Looked for in "Resources" beside the executable, then in "../share/zkutility" of the executable's folder,
// where the package puts them. Any thread.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <optional>
#include <string>

class NSData;

class NSBundle {
public:
    static const NSBundle &mainBundle();

    /// The path of the resource "name.type" ("name" when the type is empty), a file or a folder; nothing when
    /// there is none, and for a name that is no path below the folder, such as "/a", "../a" or "./a".
    std::optional<std::string> pathForResource(const std::string &name, const std::string &type) const;
    /// Its bytes, or none.
    Ref<NSData> dataForResource(const std::string &name, const std::string &type) const;
};
