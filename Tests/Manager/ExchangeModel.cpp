#include "Tests/Manager/ExchangeModel.h"

namespace {

void print(std::ostream &stream, const char *title, const Lines &lines) {
    stream << "\n  " << title << ":";
    for (const std::string &line : lines)
        stream << "\n    " << line.substr(0, 120);
}

} // namespace

std::ostream &operator<<(std::ostream &stream, const Exchange &exchange) {
    print(stream, "calls", exchange.calls);
    print(stream, "completions", exchange.completions);
    print(stream, "log", exchange.log);
    return stream;
}

std::ostream &operator<<(std::ostream &stream, const ScriptedTransport::Read &read) {
    stream << "{" << read.status << ", " << hex(read.bytes).substr(0, 40);
    if (read.length)
        stream << ", length " << *read.length;
    return stream << "}";
}

Exchange predictExchange(const ScriptedTransport &script, const Bytes &request, std::int32_t timeout) {
    Exchange seen;
    Bytes buffer;
    std::size_t length = 0, turn = 0;
    std::int32_t status = TL_USB_OK; // of the latest call
    const auto read = [&](std::int32_t limit) {
        seen.calls.push_back("read #1 " + std::to_string(limit) + " 4096 0");
        buffer.assign(4096, 0);
        length = 0;
        status = TL_USB_ERROR_TIMEOUT;
        if (turn >= script.reads.size())
            return false;
        const ScriptedTransport::Read &transfer = script.reads[turn++];
        for (std::size_t i = 0; i < transfer.bytes.size() && i < 4096; ++i)
            buffer[i] = transfer.bytes[i];
        const std::int64_t reported =
            transfer.length ? *transfer.length : static_cast<std::int64_t>(transfer.bytes.size());
        length = reported < 0 ? 0 : reported > 4096 ? 4096 : static_cast<std::size_t>(reported);
        status = transfer.status;
        return status == 0;
    };
    const auto received = [&] { return Bytes(buffer.begin(), buffer.begin() + static_cast<long>(length)); };
    const auto complete = [&](const std::string &header, const std::string &data) {
        seen.completions.push_back(header + " " + data + " " + std::to_string(status));
    };

    seen.calls.push_back(std::string("open 2 ") + sampleUri);
    status = script.openStatus == TL_USB_OK && !script.givesHandle ? TL_USB_ERROR_INVALID : script.openStatus;
    if (status != 0) {
        complete("none", "none");
        return seen;
    }
    while (read(100)) {
    }
    seen.calls.push_back("write #1 " + std::to_string(timeout) + " 0 " + hex(request));
    status = script.writeStatus;
    bool works = status == 0;
    while (works && (works = read(timeout))) {
        if (buffer[0] == 0x00 && buffer[1] == 0xAC) {
            const Bytes header = received();
            const bool hasData = header.size() >= 8 && (header[4] != 0 || header[5] != 0) &&
                                 (header[6] != 0 || header[7] != 0);
            if (!hasData) {
                complete(hex(header), "none");
                return seen;
            }
            const std::size_t announced = header[6] * 256u + header[7];
            read(timeout);
            complete(hex(header), hex(received()));
            if (length == announced) {
                seen.log.push_back("len:" + std::to_string(announced) + ",size:" + std::to_string(length));
                return seen;
            }
            if (seen.completions.size() == 2)
                return seen;
        }
        if (buffer[0] == 0x00 || buffer[1] == 0xAC)
            return seen;
    }
    seen.calls.push_back("close #1");
    complete("none", "none");
    return seen;
}
