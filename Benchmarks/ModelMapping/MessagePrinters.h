// The document mapped by protobuf's JSON utility from and to generated messages.
#pragma once

#include "ModelMapping/printers.pb.h"

#include <string>

struct MessagePrinters {
    using Text = std::string;
    using Objects = PrintersMessage;

    static Text text(const std::string &document) { return "{\"printers\":" + document + "}"; }
    static Objects read(const Text &text);
    static Text write(const Objects &objects);
    static std::size_t count(const Objects &objects) {
        return static_cast<std::size_t>(objects.printers_size());
    }
};
