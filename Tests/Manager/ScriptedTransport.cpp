#include "Tests/Manager/ScriptedTransport.h"

#include "Tests/Manager/ManagerTesting.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <gtest/gtest.h>

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
    const std::scoped_lock guard(mutex_);
    return std::exchange(calls_, {});
}

void ScriptedTransport::note(const std::string &call) {
    {
        const std::scoped_lock guard(mutex_);
        calls_.push_back(call);
    }
    if (onCall)
        onCall(call);
}

std::int32_t ScriptedTransport::list(std::int32_t vid, tl_usb_device_info **list, std::int32_t *count) {
    EXPECT_EQ(*list, nullptr);
    EXPECT_EQ(*count, 0);
    note("list " + std::to_string(vid));
    list_ = std::vector(devices); // at another place, so that a stale list is noticed
    *list = givesList ? list_.data() : nullptr;
    *count = deviceCount.value_or(static_cast<std::int32_t>(list_.size()));
    return TL_USB_ERROR_IO; // which nobody looks at
}

std::int32_t ScriptedTransport::printerInfo(const std::string &arguments, char **text) {
    EXPECT_STREQ(*text, "") << "a text of the caller's own";
    note("info " + arguments);
    if (info != Info::left)
        *text = info == Info::text ? ::strdup(infoText.c_str()) : nullptr;
    return infoStatus;
}

std::int32_t ScriptedTransport::open(const char *uri, std::int32_t mode, void **handle) {
    EXPECT_EQ(*handle, nullptr);
    note("open " + std::to_string(mode) + " " + uri);
    const std::scoped_lock guard(mutex_);
    if (givesHandle) {
        *handle = std::bit_cast<void *>(readsDone_.size() + 1);
        readsDone_[*handle] = 0;
    }
    return openStatus;
}

std::int32_t ScriptedTransport::write(void *handle, const std::string &arguments) {
    note("write " + name(handle) + " " + arguments);
    return writeStatus;
}

std::int32_t ScriptedTransport::read(void *handle, const std::string &arguments, std::uint8_t *buffer,
                                     std::int32_t *length) {
    const bool clean = std::all_of(buffer, buffer + *length, [](std::uint8_t byte) { return byte == 0; });
    note("read " + name(handle) + " " + arguments + (clean ? "" : " dirty"));
    Read answer{.status = TL_USB_ERROR_TIMEOUT};
    {
        const std::scoped_lock guard(mutex_);
        const std::size_t turn = readsDone_.at(handle)++;
        if (turn < reads.size())
            answer = reads[turn];
    }
    std::copy_n(answer.bytes.begin(), std::min<std::size_t>(answer.bytes.size(), 4096), buffer);
    *length = answer.length.value_or(static_cast<std::int32_t>(answer.bytes.size()));
    return answer.status;
}

std::int32_t ScriptedTransport::close(void *handle) {
    note("close " + name(handle));
    return TL_USB_ERROR_IO; // which nobody looks at
}

std::int32_t tl_usb_get_devicelist_by_vid(std::int32_t vid, tl_usb_device_info **list, std::int32_t *count) {
    return current->list(vid, list, count);
}

std::int32_t tl_usb_get_printer_info(const char *uri, std::int32_t first, std::int32_t second,
                                     std::int32_t timeout_ms, std::int32_t third, char **text) {
    return current->printerInfo(uri + (" " + joined(first, second, timeout_ms, third)), text);
}

std::int32_t tl_usb_get_device_handle(const char *uri, std::int32_t mode, void **handle) {
    return current->open(uri, mode, handle);
}

std::int32_t tl_usb_data_transfer_by_handle(void *handle, const std::uint8_t *write_buffer,
                                            std::uint32_t write_length, std::int32_t timeout_ms,
                                            std::uint8_t *read_buffer, std::int32_t *read_length,
                                            std::uintptr_t reserved) {
    EXPECT_EQ(read_buffer == nullptr, read_length == nullptr);
    if (read_buffer) {
        EXPECT_EQ(write_buffer, nullptr);
        EXPECT_EQ(write_length, 0u);
        return current->read(handle, joined(timeout_ms, *read_length, reserved), read_buffer, read_length);
    }
    const Bytes written(write_buffer, write_buffer + write_length);
    return current->write(handle, joined(timeout_ms, reserved) + " " + hex(written));
}

std::int32_t tl_usb_close_device_handle(void *handle) {
    return current->close(handle);
}
