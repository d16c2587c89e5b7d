// Requests written out as they are on the wire: universal exit, the printer's language, a frame, universal
// exit.
#pragma once

#include "Tests/Support/Bytes.h"

namespace envelopes {

using namespace std::string_view_literals;

inline const Bytes readThreshold = bytesOf("\x1B%-12345X@PJL ENTER LANGUAGE=ACL\r\n"
                                           "\x00\xAC\xFF\x21\x00\x2E\0\0\0\0\0\0\0\0\0\0"
                                           "<!--#ssi IDr OID_PLATFORM_CONSUMEABLE_HINT -->"
                                           "\x1B%-12345X"sv);
inline const Bytes writeThreshold5 = bytesOf("\x1B%-12345X@PJL ENTER LANGUAGE=ACL\r\n"
                                             "\x00\xAC\xFF\x20\x00\x1F\0\0\0\0\0\0\0\0\0\0"
                                             "OID_PLATFORM_CONSUMEABLE_HINT=5"
                                             "\x1B%-12345X"sv);

} // namespace envelopes
