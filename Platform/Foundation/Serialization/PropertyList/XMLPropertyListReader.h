// Property lists in XML: text to objects.
//
//     <plist version="1.0"><dict>
//         <key>name</key><string>Zelkor &lt;L200&gt;</string>
//         <key>levels</key><array><integer>10</integer><integer>0x14</integer></array>
//         <key>price</key><real>1.5</real>    <key>on</key><true/>    <key>image</key><data>AAEC</data>
//         <key>made</key><date>2014-01-20T12:24:48Z</date>
//     </dict></plist>
//
// The text is UTF-8, UTF-16, ISO-8859-1 or ASCII, by its mark, its declaration or, UTF-16 without either, its
// first character. There may be the usual document type, which is never fetched, but it defines nothing
// itself. Attributes mean nothing. Only numbers, dates and data may have white space around them, data also
// within. Of equal keys the last counts.
//
//     integer  decimal or hexadecimal, from −2⁶³ to 2⁶⁴ − 1
//     real     decimal, "nan", "inf" or "infinity"; too small is zero, too large is none
//     date     of the years 0 to 9999, in this form
//     data     base64 with its padding
#pragma once

#include "Platform/Foundation/Serialization/PropertyList/PropertyListObjects.h"

#include <string>
#include <string_view>

/// None, and `refusal` says in which line what was expected, for a text that is no such list or nests too
/// deep.
id readXMLPropertyList(std::string_view bytes, const PropertyListObjects &objects, std::string &refusal);
