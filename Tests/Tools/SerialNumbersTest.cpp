#include "Tools/zkprinter/SerialNumbers.h"

#include <gtest/gtest.h>

TEST(SerialNumbers, areHiddenWhereverTheyOccur) {
    SerialNumbers serials;
    for (const char *serial : {"SN001", "SN00112345", "7", "a\tb", "序列号一二三", "A B&'SECRET", ""})
        serials.add(serial);
    const std::pair<const char *, const char *> rows[] = {
        {"", ""},
        {"serialNumber:SN00112345", "serialNumber:SN0…45"},
        {"xSN00112345SN00112345y", "xSN0…45SN0…45y"},
        {"SN001 Desk_SN001 (SN001)", "… Desk_… (…)"},
        {"SN0019 xSN001 SN001é", "SN0019 xSN001 SN001é"}, // other words
        {"7 of 17, usb:7", "… of 17, usb:…"},
        {"a\tb a\\tb", "… …"}, // as it is, and as the log writes it
        {"nr 序列号一二三", "nr …"},
        {"\"usb://Z/L?serial=UNKNOWN123&x=1\" serial=Q%20 serial=",
         "\"usb://Z/L?serial=UNK…23&x=1\" serial=… serial="},
        {"usb://Z/L?serial=%E5%BA%8F", "usb://Z/L?serial=…"},
        {"usb://Z/L?serial=A%20B&'SECRET A%20B&'SECRET", "usb://Z/L?serial=… …"},
        {"serial=UNKNOWN'123&x", "serial=…&x"},
        {R"({"MFG":"Z","SN":"UNKNOWN123","SERN":"a\"SECRET","SERIALNUMBER":"x"})",
         R"({"MFG":"Z","SN":"UNK…23","SERN":"…","SERIALNUMBER":"…"})"},
    };
    for (const auto &[text, hidden] : rows)
        EXPECT_EQ(serials.hide(text), hidden) << text;
}
