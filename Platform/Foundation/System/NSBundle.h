// The program's own resources: the files installed with it.
//
// They are looked for in "Resources" in the executable's folder, and then in "../share/zkutility" from there,
// where the package installs them. Safe from any thread.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <optional>
#include <string>

#pragma GCC visibility push(default)

class NSData;

class NSBundle {
public:
    static const NSBundle &mainBundle();

    /// The path of the resource "name.type" ("name" when the type is empty), a file or a folder. Nothing when
    /// there is none, and unless the name is the normalised path of something below the folder ("/a", "../a"
    /// and "./a" are not).
    std::optional<std::string> pathForResource(const std::string &name, const std::string &type) const;
    /// The contents of the resource; none when it cannot be read.
    Ref<NSData> dataForResource(const std::string &name, const std::string &type) const;
};

#pragma GCC visibility pop
