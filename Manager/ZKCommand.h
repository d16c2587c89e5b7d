// Builds the bytes of every request to a printer.
//
// A frame of the printer's binary command language, ACL (numbers big-endian):
//
// | offset | size | content                                                     |
// |--------|------|-------------------------------------------------------------|
// | 0      | 2    | 00 AC                                                       |
// | 2      | 2    | command code                                                |
// | 4      | 2    | length of the data: its low 16 bits                         |
// | 6      | 10   | reserved, zero                                              |
// | 16     | N    | the data                                                    |
//
// The PJL envelope around a frame: PJL_UEL, PJL_ENTERLANG, the `encrypt` byte unless it is 255, the frame,
// PJL_UEL. With N bytes of data and no `encrypt` byte it is 59 + N bytes long.
//
// Any thread. Every result is a new buffer.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <array>
#include <cstdint>
#include <string_view>

class NSData;

/// The PJL Universal Exit Language sequence: ESC "%-12345X".
inline constexpr std::string_view PJL_UEL = "\x1B%-12345X";
/// Switches the printer's interpreter to ACL.
inline constexpr std::string_view PJL_ENTERLANG = "@PJL ENTER LANGUAGE=ACL\r\n";
/// Marks the beginning of an ACL frame.
inline constexpr std::array<std::uint8_t, 2> AC = {0x00, 0xAC};

class ZKCommand : public NSObject {
    NS_CLASS(ZKCommand, NSObject)
public:
    /// The envelope of ACLWithCMD(command, data), without an `encrypt` byte.
    static Ref<NSData> PJLWithCMD(std::uint16_t command, const Ref<NSData> &data);
    /// A frame without data.
    static Ref<NSData> ACLWithCMD(std::uint16_t command);
    /// Data of 65,536 bytes or more is appended whole, while the length field wraps around.
    static Ref<NSData> ACLWithCMD(std::uint16_t command, const Ref<NSData> &data);
    /// Wraps any bytes; they are not inspected.
    static Ref<NSData> PJLWithACLData(const Ref<NSData> &frame, std::uint8_t encrypt);
};
