// Printer files and the folder they are plugged into.
#include "Platform/Transport/virtual/PrinterFolder.h"
#include "Platform/Transport/virtual/PrinterJson.h"
#include "Tests/Support/TemporaryFolder.h"

#include <sys/stat.h>

using transport::Fault;
using transport::PrinterFolder;
using transport::VirtualPrinterState;

namespace {

const std::string identity =
    R"("manufacturer": "Zelkor", "product": "L200", "serial": "SN1", "vid": "0x5a4B", "pid": 65535)";

std::vector<std::string> names(const PrinterFolder &folder) {
    std::vector<std::string> found;
    for (const auto &printer : folder.printers())
        found.push_back(printer.file.filename());
    return found;
}

} // namespace

TEST(PrinterJson, readsEveryKey) {
    const VirtualPrinterState plain{
        .manufacturer = "Zelkor", .product = "L200", .serial = "SN1", .vid = 0x5A4B, .pid = 65535};
    EXPECT_EQ(transport::printerFromJson("{" + identity + "}"), plain);
    VirtualPrinterState full = plain;
    full.printerStatus = -4;
    full.threshold = 99;
    full.statusText = "";
    full.faults = {Fault::Silent, Fault::UnplugAfterWrite};
    EXPECT_EQ(transport::printerFromJson("{" + identity +
                                         R"(, "printer_status": -4, "threshold": 99, "status_text": "",
                                         "faults": ["unplug_after_write", "silent"], "note": {}})"),
              full);
}

TEST(PrinterJson, saysWhatIsWrong) {
    const auto with = [](const std::string &more) { return "{" + identity + ", " + more + "}"; };
    const struct {
        std::string text;
        const char *reason;
    } cases[] = {
        {"", "Not JSON"},
        {"[1]", "JSON object"},
        {"{" + identity, "Not JSON at byte"},
        {"{" + identity + "} x", "Not JSON"},
        {"{}", "manufacturer is missing"},
        {R"({"manufacturer": ""})", "manufacturer must be"},
        {R"({"manufacturer": 1})", "manufacturer must be a text"},
        {R"({"manufacturer": "Z", "product": "a\u0000b"})", "product must be"},
        {R"({"manufacturer": "Z", "product": "P", "serial": ")" + std::string(256, 's') + "\"}", "255 bytes"},
        {R"({"manufacturer": "Z", "product": "P", "serial": "", "vid": 65536})", "vid must be"},
        {R"({"manufacturer": "Z", "product": "P", "serial": "", "vid": "0x"})", "vid must be"},
        {R"({"manufacturer": "Z", "product": "P", "serial": "", "vid": "0x12345"})", "vid must be"},
        {R"({"manufacturer": "Z", "product": "P", "serial": "", "vid": 1})", "pid is missing"},
        {"{\"manufacturer\": \"\xFF\"}", "Not JSON"},
        {with(R"("note": "\ude00")"), "surrogate"},
        {with(R"("threshold": "3")"), "threshold must be"},
        {with(R"("printer_status": 3.5)"), "printer_status must be"},
        {with(R"("faults": {"silent": true})"), "faults must be"},
        {with(R"("faults": ["slient"])"), "unknown name \"slient\""},
        {with("\"deep\": " + std::string(30'000, '[') + std::string(30'000, ']')), "deeper"},
        {with("\"long\": \"" + std::string(70'000, 'x') + "\""), "longer"},
    };
    for (const auto &[text, expected] : cases) {
        std::string reason;
        EXPECT_EQ(transport::printerFromJson(text, &reason), std::nullopt) << text;
        EXPECT_THAT(reason, HasSubstr(expected));
    }
}

TEST(PrinterFolder, listsPrintersByFileNameAndPassesOverTheRest) {
    const TemporaryFolder folder;
    for (const char *name : {"c1.json", "a.json", "c2.json", "B.json", "c10.json"})
        folder.put(name, "{" + identity + "}");
    folder.put("c.txt", "{" + identity + "}");
    folder.put("d.json", "{");
    std::filesystem::create_directory(folder.file("e.json"));
    ASSERT_EQ(::mkfifo(folder.file("f.json").c_str(), 0600), 0);
    EXPECT_THAT(names(PrinterFolder(folder.path())),
                ElementsAre("B.json", "a.json", "c1.json", "c10.json", "c2.json"));
    EXPECT_EQ(PrinterFolder::whyNoPrinter(folder.file("a.json")), "");
    EXPECT_THAT(PrinterFolder::whyNoPrinter(folder.file("d.json")), HasSubstr("Not JSON"));
    EXPECT_THAT(PrinterFolder::whyNoPrinter(folder.file("f.json")), HasSubstr("cannot be read"));
    EXPECT_THAT(names(PrinterFolder("")), IsEmpty());
    EXPECT_THAT(names(PrinterFolder(folder.file("missing"))), IsEmpty());
}

TEST(PrinterFolder, storingReplacesTheFileAndKeepsTheRest) {
    const TemporaryFolder folder;
    const auto file =
        folder.put("a.json", R"({"note": {"threshold": [1, 0.1, null, "}\"]"]}, "thresh\u006Fld" : 3 , )" +
                                 identity + "}");
    ASSERT_EQ(::chmod(file.c_str(), 0640), 0);
    const std::string before = folder.get("a.json");
    std::ifstream reader(file);
    ASSERT_TRUE(PrinterFolder::storeThreshold(file, 10));
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(reader), {}), before)
        << "an open reader sees one version";
    EXPECT_EQ(PrinterFolder::load(file)->threshold, 10);
    EXPECT_EQ(folder.get("a.json"), std::string(before).replace(before.find("3"), 1, "10"));
    EXPECT_EQ(std::filesystem::status(file).permissions(), std::filesystem::perms(0640));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1)
        << "nothing is left behind";

    EXPECT_FALSE(PrinterFolder::storeThreshold(folder.put("b.json", "{"), 5));
    EXPECT_EQ(folder.get("b.json"), "{");
    EXPECT_FALSE(PrinterFolder::storeThreshold(folder.file("missing.json"), 5));
    EXPECT_FALSE(std::filesystem::exists(folder.file("missing.json")));
}
