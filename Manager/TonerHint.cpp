#include "Manager/TonerHint.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSData/NSData+QNCommon.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSString/NSString+QNCommon.h"
#include "Manager/ConsumableReminder.h"
#include "Manager/ZKCommand.h"
#include "Manager/ZKUSB.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/System/NSLog.h"
#include "Platform/Foundation/Text/NSString.h"

namespace {

constexpr std::uint16_t readCommand = 0xFF21;
constexpr std::uint16_t writeCommand = 0xFF20;
constexpr std::int32_t timeout_ms = 10000;

/// The header echoes the command.
bool answers(const NSData &header, std::uint16_t command) {
    const std::uint8_t *bytes = header.bytes();
    return header.length() >= 6 && bytes[2] == command >> 8 && bytes[3] == (command & 0xFF);
}

/// The header echoes the command and carries the value 1 behind it.
bool accepts(const NSData &header, std::uint16_t command) {
    const std::uint8_t *bytes = header.bytes();
    return answers(header, command) && bytes[4] == 0 && bytes[5] == 1;
}

std::size_t announcedLength(const NSData &header) {
    const std::uint8_t *bytes = header.bytes();
    return header.length() >= 8 ? static_cast<std::size_t>(bytes[6] << 8 | bytes[7]) : 0;
}

/// One exchange; `handle` gets the printer's reply. It has to own what it uses: an exchange with the same
/// printer on another thread may still call it when this one is over.
void exchange(ZKUSB &printer, std::uint16_t command, const Ref<NSString> &text,
              std::function<void(const Ref<NSData> &, const Ref<NSData> &)> handle) {
    const auto completion = makeBlock<void(const Ref<NSData> &, const Ref<NSData> &)>(std::move(handle));
    printer.sendACLWithPJL(ZKCommand::PJLWithCMD(command, qn::dataValue(text)), timeout_ms, completion);
}

TonerHintReading readingOf(const Ref<NSData> &header, const Ref<NSData> &data) {
    if (!header)
        return {TonerHintReading::Outcome::nothing};
    if (!accepts(*header, readCommand) || !data || data->length() == 0)
        return {TonerHintReading::Outcome::rejected};
    const auto text = qn::UTF8String(data);
    const std::int32_t threshold = text ? text->intValue() : 0;
    NSLog("dataString:%@", text);
    NSLog("dataInt:%d", threshold);
    return {TonerHintReading::Outcome::threshold, threshold,
            std::string(reinterpret_cast<const char *>(data->bytes()), data->length()),
            announcedLength(*header)};
}

TonerHintWriting writingOf(const Ref<NSData> &header) {
    if (!header)
        return TonerHintWriting::nothing;
    const bool success = accepts(*header, writeCommand);
    NSLog(success ? "set honer success" : "set honer fail");
    return success                          ? TonerHintWriting::success
           : answers(*header, writeCommand) ? TonerHintWriting::failure
                                            : TonerHintWriting::unclear;
}

} // namespace

void readTonerHint(const Ref<ZKUSB> &printer, const std::function<void(const TonerHintReading &)> &deliver) {
    if (!printer)
        return;
    exchange(*printer, readCommand, u"<!--#ssi IDr OID_PLATFORM_CONSUMEABLE_HINT -->"_ns,
             [deliver](const Ref<NSData> &header, const Ref<NSData> &data) {
                 NSLog("get honer sendACLWithPJL header: %@", header);
                 NSLog("get honer sendACLWithPJL data: %@", data);
                 deliver(readingOf(header, data));
             });
}

void writeTonerThreshold(const Ref<ZKUSB> &printer, std::int64_t threshold,
                         const std::function<void(TonerHintWriting)> &deliver) {
    if (!printer)
        return;
    const auto text =
        u"OID_PLATFORM_CONSUMEABLE_HINT"_ns->stringByAppendingFormat("%@%ld", u"="_ns, threshold);
    NSLog("pjl_tonerhint_set:%@", text);
    exchange(*printer, writeCommand, text, [deliver](const Ref<NSData> &header, const Ref<NSData> &data) {
        NSLog("set honer sendACLWithPJL header: %@", header);
        NSLog("set honer sendACLWithPJL data: %@", data);
        deliver(writingOf(header));
    });
}

void writeTonerHint(const Ref<ZKUSB> &printer, std::int64_t popUpIndex,
                    const std::function<void(TonerHintWriting)> &deliver) {
    writeTonerThreshold(printer, thresholdForPopUpIndex(popUpIndex), deliver);
}
