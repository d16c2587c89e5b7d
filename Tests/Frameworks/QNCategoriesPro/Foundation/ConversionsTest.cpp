// Operations that make one text of another.
#include "Frameworks/QNCategoriesPro/Foundation/NSData/NSData+QNCommon.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSDictionary/NSDictionary+QNCommon.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+QNCommon.h"
#include "Tests/Support/Objects.h"
#include "Tests/Support/TextTable.h"

TEST(Conversions, giveWhatTheTableSays) {
    expectTable(
        ZK_TABLES "/Foundation/Conversions.txt",
        {{"hexData", [](auto &given) { return text(qn::hexData(string(given))); }},
         {"base64EncodedString", [](auto &given) { return text(qn::base64EncodedString(string(given))); }},
         {"base64DecodedString", [](auto &given) { return text(qn::base64DecodedString(string(given))); }},
         {"base64DecodedData", [](auto &given) { return text(qn::base64DecodedData(string(given))); }},
         {"crc32String", [](auto &given) { return text(qn::crc32String(string(given))); }},
         {"URLDecode", [](auto &given) { return text(qn::URLDecode(string(given))); }},
         {"MIMEType", [](auto &given) { return text(qn::MIMEType(string(given))); }},
         {"stringFromFileSize", [](auto &given) { return text(qn::stringFromFileSize(std::stoull(given))); }},
         {"stringFromDiskSize", [](auto &given) { return text(qn::stringFromDiskSize(std::stoull(given))); }},
         {"NSNumberFromID", [](auto &given) { return typed(NSNumberFromID(string(given))); }}});
}
