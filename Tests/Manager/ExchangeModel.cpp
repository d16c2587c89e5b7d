#include "Tests/Manager/ExchangeModel.h"

Lines predictExchange(const ScriptedTransport &script, const Bytes &request, std::int32_t timeout) {
    Lines story = {std::string("open 2 ") + sampleUri};
    std::int32_t status =
        script.openStatus == 0 && !script.givesHandle ? TL_USB_ERROR_INVALID : script.openStatus;
    Bytes buffer;
    std::int64_t length = 0;
    std::size_t turn = 0, completions = 0;
    const auto read = [&](std::int32_t limit) {
        story.push_back("read #1 " + std::to_string(limit) + " 4096 0");
        ScriptedTransport::Read transfer{.status = TL_USB_ERROR_TIMEOUT};
        if (turn < script.reads.size())
            transfer = script.reads[turn++];
        length = std::clamp<std::int64_t>(transfer.length.value_or(std::ssize(transfer.bytes)), 0, 4096);
        buffer = transfer.bytes;
        buffer.resize(4096);
        status = transfer.status;
        return status == 0;
    };
    const auto received = [&] { return hex(Bytes(buffer.begin(), buffer.begin() + length)); };
    const auto complete = [&](const std::string &header, const std::string &data) {
        story.push_back("complete " + header + " " + data + " " + std::to_string(status));
        ++completions;
    };

    if (status != 0) {
        complete("none", "none");
        return story;
    }
    while (read(100)) {
    }
    story.push_back("write #1 " + std::to_string(timeout) + " 0 " + hex(request));
    status = script.writeStatus;
    while (script.writeStatus == 0 && read(timeout)) {
        if (buffer[0] == 0x00 && buffer[1] == 0xAC) {
            const std::string header = received();
            const std::int64_t announced = buffer[6] * 256 + buffer[7];
            if (length < 8 || (buffer[4] == 0 && buffer[5] == 0) || announced == 0) {
                complete(header, "none");
                return story;
            }
            read(timeout);
            complete(header, received());
            if (length == announced)
                story.push_back("log len:" + std::to_string(announced) + ",size:" + std::to_string(length));
            if (length == announced || completions == 2)
                return story;
        }
        if (buffer[0] == 0x00 || buffer[1] == 0xAC)
            return story;
    }
    story.emplace_back("close #1");
    complete("none", "none");
    return story;
}
