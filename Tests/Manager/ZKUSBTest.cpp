#include "Tests/Manager/ManagerTesting.h"

TEST(ZKUSB, buildsItsUriFromItsFields) {
    const struct {
        const char *manufacturer, *name, *serial, *uri;
    } rows[] = {
        {"Zelkor", "Sample Laser Series", "SN0001", sampleUri},
        {"none", "none", "none", "usb://(null)/(null)?serial=(null)"},
        {"", "", "", "usb:///?serial="},
        {"A-._~!$&'()*+,;=:@/?b9", "100%#[]\"<>\\^`{|}", "\t\n", // every character by its own rule
         "usb://A-._~!$&'()*+,;=:@/?b9/100%25%23%5B%5D%22%3C%3E%5C%5E%60%7B%7C%7D?serial=%09%0A"},
        {"Bürö", "打印机", "\U0001F5A8",
         "usb://B%C3%BCr%C3%B6/%E6%89%93%E5%8D%B0%E6%9C%BA?serial=%F0%9F%96%A8"},
    };
    for (const auto &[manufacturer, name, serial, uri] : rows) {
        const auto record = make<ZKUSB>();
        record->setManufacturer(textOf(manufacturer));
        record->setPrinterName(textOf(name));
        record->setPrinterType(u"not part of it"_ns);
        record->setSerialNumber(textOf(serial));
        record->setURI(u"usb://assigned"_ns);
        EXPECT_EQ(utf8(record->URI()), uri);
    }
}

TEST(ZKUSB, keepsCopiesOfTexts) {
    const auto text = std::static_pointer_cast<NSMutableString>(u"SN0001"_ns->mutableCopy());
    const auto record = make<ZKUSB>();
    record->setPrinterType(text);
    record->setPrinterName(text);
    record->setSerialNumber(text);
    record->setManufacturer(text);
    record->setIp(text);
    text->setString(u"changed"_ns);
    for (const auto &kept : {record->printerType(), record->printerName(), record->serialNumber(),
                             record->manufacturer(), record->ip()})
        EXPECT_EQ(utf8(kept), "SN0001");
    record->setIp(nullptr);
    EXPECT_EQ(record->ip(), nullptr);
}
