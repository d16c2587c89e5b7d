#include "Platform/Foundation/Serialization/JSON/JSONScalars.h"

#include "Platform/Foundation/Text/Unicode.h"

Ref<NSString> JSONScalars::makeText(std::string_view bytes) {
    if (auto units = unicode::utf16FromUTF8(bytes))
        return pool_.make<NSString>(std::move(*units));
    refusal_ = "Invalid UTF-8 in string.";
    return nullptr;
}
