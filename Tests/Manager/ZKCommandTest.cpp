#include "Manager/ZKCommand.h"

#include "Tests/Manager/ManagerTesting.h"

namespace {

const Bytes uel = {0x1B, 0x25, 0x2D, 0x31, 0x32, 0x33, 0x34, 0x35, 0x58};
const Bytes enterAcl = {0x40, 0x50, 0x4A, 0x4C, 0x20, 0x45, 0x4E, 0x54, 0x45, 0x52, 0x20, 0x4C, 0x41,
                        0x4E, 0x47, 0x55, 0x41, 0x47, 0x45, 0x3D, 0x41, 0x43, 0x4C, 0x0D, 0x0A};

Bytes concatenated(std::initializer_list<Bytes> parts) {
    Bytes all;
    for (const Bytes &part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

} // namespace

TEST(ZKCommand, framesCommandAndData) {
    const struct {
        std::uint16_t command;
        Ref<NSData> data;
        Bytes frame;
    } rows[] = {
        {0xFF21, nullptr, {0x00, 0xAC, 0xFF, 0x21, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
        {0x0102, NSData::data(), {0x00, 0xAC, 0x01, 0x02, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
        {0xFF20,
         dataOf({0x00, 0xFF}),
         {0x00, 0xAC, 0xFF, 0x20, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x00, 0xFF}},
    };
    for (const auto &[command, data, frame] : rows) {
        EXPECT_EQ(hex(ZKCommand::ACLWithCMD(command, data)), hex(frame));
        EXPECT_EQ(hex(ZKCommand::PJLWithCMD(command, data)), hex(concatenated({uel, enterAcl, frame, uel})));
    }
    EXPECT_EQ(hex(ZKCommand::ACLWithCMD(0xFF21)), hex(rows[0].frame));
}

TEST(ZKCommand, lengthWrapsWhileDataStaysWhole) {
    const struct {
        std::size_t length;
        std::uint8_t high, low;
    } rows[] = {{255, 0, 255}, {256, 1, 0}, {65535, 255, 255}, {65536, 0, 0}, {65537, 0, 1}};
    for (const auto &[length, high, low] : rows) {
        const Bytes data(length, 0x5A);
        const Bytes header = {0x00, 0xAC, 0xFF, 0x20, high, low, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
        EXPECT_EQ(hex(ZKCommand::ACLWithCMD(0xFF20, dataOf(data))), hex(concatenated({header, data})))
            << length;
        EXPECT_EQ(ZKCommand::PJLWithCMD(0xFF20, dataOf(data))->length(), 59 + length);
    }
}

TEST(ZKCommand, wrapsAnyFrameAndWritesEveryEncryptByteBut255) {
    for (const Bytes &frame : {Bytes{}, Bytes{0x1B, 0x00, 0xFF}})
        for (const auto &[encrypt, written] :
             {std::pair<std::uint8_t, Bytes>{0, {0x00}}, {254, {0xFE}}, {255, {}}})
            EXPECT_EQ(hex(ZKCommand::PJLWithACLData(dataOf(frame), encrypt)),
                      hex(concatenated({uel, enterAcl, written, frame, uel})));
}
