// The document mapped by the helper library.
#pragma once

#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Data/NSData.h"

#include <string>

struct OurPrinters {
    using Text = Ref<NSData>;
    using Objects = Ref<NSArray>;

    static Text text(const std::string &document) {
        return NSData::dataWithBytes(document.data(), document.size());
    }
    static Objects read(const Text &text);
    static Text write(const Objects &objects);
    static std::size_t count(const Objects &objects) { return objects->count(); }
};
