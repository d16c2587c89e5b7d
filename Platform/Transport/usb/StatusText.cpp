#include "Platform/Transport/usb/StatusText.h"

#include <rapidjson/encodings.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace transport {

namespace {

constexpr uint8_t noError = 0x08, selected = 0x10, paperEmpty = 0x20;
constexpr int normal = 3, notNormal = 2;

std::string validUtf8(const std::string &text) {
    using Utf8 = rapidjson::UTF8<>;
    rapidjson::MemoryStream input(text.data(), text.size());
    rapidjson::GenericStringBuffer<Utf8> output;
    while (input.Tell() < text.size()) {
        const size_t start = input.Tell();
        const size_t written = output.GetSize();
        if (!Utf8::Validate(input, output)) {
            output.Pop(output.GetSize() - written);
            Utf8::Encode(output, 0xFFFD);
            input = rapidjson::MemoryStream(text.data(), text.size());
            input.src_ += start + 1;
        }
    }
    return {output.GetString(), output.GetSize()};
}

} // namespace

std::string statusText(uint8_t portStatus, const DeviceId &id) {
    const bool ready = (portStatus & (noError | selected | paperEmpty)) == (noError | selected);
    rapidjson::StringBuffer buffer;
    rapidjson::Writer writer(buffer);
    const auto text = [&writer](const std::string &value) {
        const std::string valid = validUtf8(value);
        writer.String(valid.data(), static_cast<rapidjson::SizeType>(valid.size()));
    };
    writer.StartObject();
    writer.Key("printer_status");
    writer.Int(ready ? normal : notNormal);
    writer.Key("selected");
    writer.Bool((portStatus & selected) != 0);
    writer.Key("paper_empty");
    writer.Bool((portStatus & paperEmpty) != 0);
    writer.Key("error");
    writer.Bool((portStatus & noError) == 0);
    writer.Key("device_id");
    writer.StartObject();
    for (const auto &[key, value] : id) {
        text(key);
        text(value);
    }
    writer.EndObject();
    writer.EndObject();
    return {buffer.GetString(), buffer.GetSize()};
}

} // namespace transport
