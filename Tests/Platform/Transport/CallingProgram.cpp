// A program that is told to end while it is in a call of the transport library.
//
// Usage: calling_program URI read|write|status
#include "Platform/Transport/zkcomtl.h"
#include "Tests/Support/Envelopes.h"

#include <csignal>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

int main(int argc, char **argv) {
    constexpr std::int32_t patience_ms = 60'000;
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    std::thread([signals] {
        int signal = 0;
        sigwait(&signals, &signal);
        std::quick_exit(128 + signal);
    }).detach();

    const std::string call = argc == 3 ? argv[2] : "";
    if (call == "status") {
        char *text = nullptr;
        return tl_usb_get_printer_info(argv[1], 0, 2, patience_ms, 1, &text);
    }
    void *handle = nullptr;
    if (call.empty() || tl_usb_get_device_handle(argv[1], 2, &handle) != TL_USB_OK)
        return EXIT_FAILURE;
    std::vector<std::uint8_t> reply(4096);
    auto length = static_cast<std::int32_t>(reply.size());
    const bool reads = call == "read";
    return tl_usb_data_transfer_by_handle(
        handle, reads ? nullptr : envelopes::readThreshold.data(),
        reads ? 0 : static_cast<std::uint32_t>(envelopes::readThreshold.size()), patience_ms,
        reads ? reply.data() : nullptr, reads ? &length : nullptr, 0);
}
