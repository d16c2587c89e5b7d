#include "Manager/ZKCommand.h"

#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Runtime/Object/Class.h"

NS_IMPLEMENTATION(ZKCommand) {}

namespace {

constexpr NSUInteger frameHeaderLength = 16;
constexpr std::uint8_t noEncryption = 255;

void writeBigEndian(std::uint8_t *bytes, std::uint16_t value) {
    bytes[0] = static_cast<std::uint8_t>(value >> 8);
    bytes[1] = static_cast<std::uint8_t>(value);
}

void append(NSMutableData &data, std::string_view bytes) {
    data.appendBytes(bytes.data(), bytes.size());
}

} // namespace

Ref<NSData> ZKCommand::PJLWithCMD(std::uint16_t command, const Ref<NSData> &data) {
    return PJLWithACLData(ACLWithCMD(command, data), noEncryption);
}

Ref<NSData> ZKCommand::ACLWithCMD(std::uint16_t command) {
    return ACLWithCMD(command, nullptr);
}

Ref<NSData> ZKCommand::ACLWithCMD(std::uint16_t command, const Ref<NSData> &data) {
    const auto frame = NSMutableData::dataWithCapacity(frameHeaderLength + (data ? data->length() : 0));
    frame->setLength(frameHeaderLength);
    std::uint8_t *header = frame->mutableBytes();
    header[0] = AC[0];
    header[1] = AC[1];
    writeBigEndian(header + 2, command);
    if (data) {
        writeBigEndian(header + 4, static_cast<std::uint16_t>(data->length()));
        frame->appendData(data);
    }
    return frame;
}

Ref<NSData> ZKCommand::PJLWithACLData(const Ref<NSData> &frame, std::uint8_t encrypt) {
    const NSUInteger length = frame ? frame->length() : 0;
    const auto envelope =
        NSMutableData::dataWithCapacity(2 * PJL_UEL.size() + PJL_ENTERLANG.size() + 1 + length);
    append(*envelope, PJL_UEL);
    append(*envelope, PJL_ENTERLANG);
    if (encrypt != noEncryption)
        envelope->appendBytes(&encrypt, 1);
    if (frame)
        envelope->appendData(frame);
    append(*envelope, PJL_UEL);
    return envelope;
}
