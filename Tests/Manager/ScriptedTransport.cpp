#include "Tests/Manager/ScriptedTransport.h"

#include "Tests/Support/Bytes.h"

#include <bit>
#include <cstring>

namespace {

ScriptedTransport *current;

std::string name(void *handle) {
    return "#" + std::to_string(std::bit_cast<std::uintptr_t>(handle));
}

template <class... Numbers>
std::string joined(Numbers... numbers) {
    std::string text;
    ((text += (text.empty() ? "" : " ") + std::to_string(numbers)), ...);
    return text;
}

} // namespace

ScriptedTransport::ScriptedTransport() {
    EXPECT_EQ(std::exchange(current, this), nullptr);
}

ScriptedTransport::~ScriptedTransport() {
    current = nullptr;
}

std::vector<std::string> ScriptedTransport::takeCalls() {
    const locking::MutexLock guard(mutex_);
    return std::exchange(calls_, {});
}

void ScriptedTransport::note(const std::string &call) {
    {
        const locking::MutexLock guard(mutex_);
        calls_.push_back(call);
    }
    if (onCall)
        onCall(call);
}

void *ScriptedTransport::newHandle() {
    const locking::MutexLock guard(mutex_);
    void *const handle = std::bit_cast<void *>(readsDone_.size() + 1);
    readsDone_[handle] = 0;
    return handle;
}

ScriptedTransport::Read ScriptedTransport::nextRead(void *handle) {
    const locking::MutexLock guard(mutex_);
    const std::size_t turn = readsDone_.at(handle)++;
    return turn < reads.size() ? reads[turn] : Read{.status = TL_USB_ERROR_TIMEOUT};
}

void ScriptedTransport::attachLaser() {
    devices = {deviceOf("SN0001", "Sample Laser Series")};
    infoText = R"({"printer_status": 3})";
}

tl_usb_device_info deviceOf(const std::string &serial, const std::string &product) {
    tl_usb_device_info info{};
    serial.copy(info.serial, sizeof info.serial);
    product.copy(info.product, sizeof info.product);
    std::strcpy(info.manufacturer, "Zelkor");
    return info;
}

std::int32_t tl_usb_get_devicelist_by_vid(std::int32_t vid, tl_usb_device_info **list, std::int32_t *count) {
    EXPECT_EQ(*list, nullptr);
    EXPECT_EQ(*count, 0);
    current->note("list " + std::to_string(vid));
    current->listed = std::vector(current->devices); // at another place, so that a stale list is noticed
    *list = current->givesList ? current->listed.data() : nullptr;
    *count = current->deviceCount.value_or(static_cast<std::int32_t>(current->listed.size()));
    return TL_USB_ERROR_IO; // which nobody looks at
}

std::int32_t tl_usb_get_printer_info(const char *uri, std::int32_t first, std::int32_t second,
                                     std::int32_t timeout_ms, std::int32_t third, char **text) {
    EXPECT_STREQ(*text, "") << "a text of the caller's own";
    current->note("info " + std::string(uri) + " " + joined(first, second, timeout_ms, third));
    if (current->infoText)
        *text = *current->infoText ? ::strdup(*current->infoText) : nullptr;
    return current->infoStatus;
}

std::int32_t tl_usb_get_device_handle(const char *uri, std::int32_t mode, void **handle) {
    EXPECT_EQ(*handle, nullptr);
    current->note("open " + std::to_string(mode) + " " + uri);
    if (current->givesHandle)
        *handle = current->newHandle();
    return current->openStatus;
}

std::int32_t tl_usb_data_transfer_by_handle(void *handle, const std::uint8_t *write_buffer,
                                            std::uint32_t write_length, std::int32_t timeout_ms,
                                            std::uint8_t *read_buffer, std::int32_t *read_length,
                                            std::uintptr_t reserved) {
    EXPECT_EQ(read_buffer == nullptr, read_length == nullptr);
    if (!read_buffer) {
        const Bytes written(write_buffer, write_buffer + write_length);
        current->note("write " + name(handle) + " " + joined(timeout_ms, reserved) + " " + hex(written));
        return current->writeStatus;
    }
    EXPECT_EQ(write_buffer, nullptr);
    EXPECT_EQ(write_length, 0u);
    const bool clean = std::all_of(read_buffer, read_buffer + *read_length, std::logical_not());
    current->note("read " + name(handle) + " " + joined(timeout_ms, *read_length, reserved) +
                  (clean ? "" : " dirty"));
    const ScriptedTransport::Read answer = current->nextRead(handle);
    std::copy_n(answer.bytes.begin(), std::min<std::size_t>(answer.bytes.size(), 4096), read_buffer);
    *read_length = answer.length.value_or(static_cast<std::int32_t>(answer.bytes.size()));
    return answer.status;
}

std::int32_t tl_usb_close_device_handle(void *handle) {
    current->note("close " + name(handle));
    return TL_USB_ERROR_IO; // which nobody looks at
}
