// Reads property lists in XML.
//
//     <plist version="1.0"><dict>
//         <key>name</key><string>Zelkor &lt;L200&gt;</string>
//         <key>levels</key><array><integer>10</integer><integer>0x14</integer></array>
//         <key>price</key><real>1.5</real>    <key>on</key><true/>    <key>image</key><data>AAEC</data>
//         <key>made</key><date>2014-01-20T12:24:48Z</date>
//     </dict></plist>
//
// The text is UTF-8, UTF-16, ISO-8859-1 or ASCII, as its byte-order mark or declaration says; UTF-16 is also
// recognised by its first character. A document type is allowed but never fetched, and it must not contain
// definitions. Attributes are ignored. Numbers, dates and data may have white space around them, data also
// within. Of equal keys the last one counts.
//
//     integer  decimal or hexadecimal, from −2⁶³ to 2⁶⁴ − 1
//     real     decimal, "nan", "inf" or "infinity"; too small a number becomes zero, too large a one is
//     refused date     of the years 0 to 9999, in the form above data     base64 with padding
#pragma once

#include "Platform/Foundation/Serialization/PropertyList/PropertyListObjects.h"

#include <string>
#include <string_view>

/// On failure none, and `refusal` says what was expected in which line: for any other text, and for lists
/// that nest too deeply.
id readXMLPropertyList(std::string_view bytes, const PropertyListObjects &objects, std::string &refusal);
