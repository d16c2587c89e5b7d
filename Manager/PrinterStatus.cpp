#include "Manager/PrinterStatus.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+QNCommon.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Numbers/NSNumber.h"
#include "Platform/Foundation/Serialization/JSON/NSJSONSerialization.h"
#include "Platform/Foundation/System/NSError.h"
#include "Platform/Foundation/System/NSLog.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Locking/Mutex.h"
#include "Platform/Transport/zkcomtl.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>

using Outcome = PrinterStatus::Outcome;

namespace {

constexpr std::int32_t timeout_ms = 2000;
constexpr std::int64_t statesOfANormalPrinter[] = {3, 1};

struct Free {
    void operator()(char *text) const { std::free(text); }
};
using HeapText = std::unique_ptr<char, Free>;

NSInteger integerOf(const id &value) {
    if (const auto number = as<NSNumber>(value))
        return number->integerValue();
    const auto text = as<NSString>(value);
    return text ? text->integerValue() : 0;
}

void logParseError(const NSError &error) {
    NSLog("NSData 转 NSDictionary 失败\n");
    NSLog("Error Domain:%@", error.domain());
    NSLog("错误代码：%ld", error.code());
    NSLog("错误描述：%@", error.localizedDescription());
    NSLog("错误恢复建议：%@", error.localizedRecoverySuggestion());
}

PrinterStatus judge(NSInteger value) {
    for (const std::int64_t normal : statesOfANormalPrinter)
        if (value == normal) {
            NSLog("printer status normal");
            return {Outcome::normal, value, TL_USB_OK};
        }
    NSLog("printer status not normal");
    return {Outcome::notNormal, value, TL_USB_OK};
}

struct Complaints {
    locking::Mutex lock;
    StatusComplaintSink sink ZK_GUARDED_BY(lock);
};

Complaints &complaints() {
    static auto &all = *new Complaints;
    return all;
}

void complain(std::string_view line) {
    const locking::MutexLock guard(complaints().lock);
    if (complaints().sink)
        complaints().sink(line);
    else
        std::fwrite(line.data(), 1, line.size(), stderr);
}

} // namespace

StatusComplaintSink setStatusComplaintSink(StatusComplaintSink sink) {
    const locking::MutexLock guard(complaints().lock);
    return std::exchange(complaints().sink, std::move(sink));
}

PrinterStatus readPrinterStatus(const Ref<NSString> &deviceUri) {
    const std::string uri = deviceUri ? deviceUri->utf8() : std::string();
    // The transport may leave the pointer as it is; what it points to is then an empty text of ours.
    const HeapText ours(static_cast<char *>(std::calloc(8, 1)));
    char *text = ours.get();
    const std::int32_t status = tl_usb_get_printer_info(uri.c_str(), 0, 2, timeout_ms, 1, &text);
    const HeapText theirs(text == ours.get() ? nullptr : text);
    NSLog("str:%s\n", text);
    if (status != TL_USB_OK) {
        complain("获取状态失败, " + std::to_string(status) + "\n");
        return {Outcome::noAnswer, 0, status};
    }
    return parsePrinterStatus(text ? NSString::stringWithUTF8String(text) : nullptr);
}

PrinterStatus parsePrinterStatus(const Ref<NSString> &text) {
    if (!text || text->length() == 0) {
        complain("NSString 为空\n");
        return {Outcome::unreadable};
    }
    const auto bytes = qn::dataValue(text);
    if (!bytes) {
        complain("NSString 转NSData失败\n");
        return {Outcome::unreadable};
    }
    Ref<NSError> error;
    const id json =
        NSJSONSerialization::JSONObjectWithData(bytes, NSJSONReadingOptions::MutableContainers, &error);
    if (!json) {
        logParseError(*error);
        return {Outcome::unreadable};
    }
    const auto object = as<NSDictionary>(json);
    return judge(object ? integerOf(object->objectForKey(u"printer_status"_ns)) : 0);
}
