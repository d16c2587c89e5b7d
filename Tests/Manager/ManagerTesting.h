// What the tests of the printer share: buffers as texts, the log as lines, a sample record.
#pragma once

#include "Manager/ZKUSB.h"
#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Tests/Support/Bytes.h"
#include "Tests/Support/LogLines.h"

inline std::string hex(const Ref<NSData> &data) {
    return data ? hex(Bytes(data->span().begin(), data->span().end())) : "none";
}

inline Ref<NSData> dataOf(const Bytes &bytes) {
    return NSData::dataWithBytes(bytes.data(), bytes.size());
}

/// "none" gives none.
inline Ref<NSString> textOf(std::string_view utf8) {
    return utf8 == "none" ? nullptr : NSString::stringWithUTF8String(utf8);
}

inline std::string utf8(const Ref<NSString> &text) {
    return text ? text->utf8() : "none";
}

inline Ref<ZKUSB> recordOf(std::string_view type, std::string_view serial) {
    const auto record = make<ZKUSB>();
    record->setPrinterType(textOf(type));
    record->setPrinterName(textOf(type));
    record->setSerialNumber(textOf(serial));
    record->setManufacturer(u"Zelkor"_ns);
    return record;
}

inline Lines serialsOf(const NSArray &records) {
    Lines serials;
    for (const id &record : records)
        serials.push_back(utf8(as<ZKUSB>(record)->serialNumber()));
    return serials;
}

inline Ref<ZKUSB> sampleRecord() {
    return recordOf("Sample Laser Series", "SN0001");
}

/// As queue matching makes it; "none" leaves a text out.
inline id queueEntry(std::string_view displayName, std::string_view uri, std::string_view name = "none") {
    const auto entry = NSMutableDictionary::dictionary();
    const std::pair<Ref<NSString>, std::string_view> texts[] = {
        {u"displayName"_ns, displayName}, {u"deviceUri"_ns, uri}, {u"hideName"_ns, name}};
    for (const auto &[key, text] : texts)
        if (text != "none")
            entry->setObject(textOf(text), key);
    return entry;
}

inline constexpr const char *sampleUri = "usb://Zelkor/Sample%20Laser%20Series?serial=SN0001";
