#include "Tests/Support/UsbEmulation/UsbTestbed.h"

namespace {

constexpr int mostDevicesOfBus = 127;

gboolean onCall(UMockdevIoctlBase *, UMockdevIoctlClient *client, gpointer printer) {
    static_cast<EmulatedUsbPrinter *>(printer)->handle(client);
    return TRUE;
}

void onGone(gpointer printer, GObject *client) {
    static_cast<EmulatedUsbPrinter *>(printer)->vanish(reinterpret_cast<UMockdevIoctlClient *>(client));
}

// The signal of a client that vanishes never comes; its end does.
void onConnected(UMockdevIoctlBase *, UMockdevIoctlClient *client, gpointer printer) {
    static_cast<EmulatedUsbPrinter *>(printer)->connect(client);
    g_object_weak_ref(G_OBJECT(client), onGone, printer);
}

} // namespace

// Not destroyed: a transport library gives its printers back when the process ends, and waits for an answer.
UsbTestbed &UsbTestbed::shared() {
    static auto *const testbed = new UsbTestbed;
    static const struct Folder {
        std::filesystem::path path;
        ~Folder() {
            std::error_code none;
            std::filesystem::remove_all(path, none);
        }
    } folder{testbed->root_};
    return *testbed;
}

UsbTestbed::UsbTestbed() : testbed_(umockdev_testbed_new()) {
    gchar *const root = umockdev_testbed_get_root_dir(testbed_.get());
    root_ = root;
    g_free(root);
    // Another user is to be refused by the device, not by the folder.
    std::filesystem::permissions(root_, std::filesystem::perms::all);
}

std::shared_ptr<EmulatedUsbPrinter> UsbTestbed::plug(const transport::VirtualPrinterState &state,
                                                     const std::optional<Bytes> &descriptors) {
    forgetUnplugged();
    if (++last_.device > mostDevicesOfBus)
        last_ = {last_.bus + 1, 1};
    Plugged plugged{std::make_shared<EmulatedUsbPrinter>(last_, root_, state),
                    std::unique_ptr<UMockdevIoctlBase, Unreference>(umockdev_ioctl_base_new())};
    EmulatedUsbPrinter *const printer = plugged.printer.get();
    UMockdevIoctlBase *const calls = plugged.calls.get();
    g_signal_connect(calls, "handle-ioctl", G_CALLBACK(onCall), printer);
    g_signal_connect(calls, "client-connected", G_CALLBACK(onConnected), printer);
    plugged_.push_back(std::move(plugged));

    GError *error = nullptr;
    const std::string node = usbNodePath(last_);
    umockdev_testbed_attach_ioctl(testbed_.get(), node.c_str(), calls, &error);
    check(error);
    std::filesystem::permissions(root_ / ("ioctl" + node), std::filesystem::perms::all);
    // Announces the device, so it comes last.
    umockdev_testbed_add_from_string(
        testbed_.get(), usbRecord(last_, state, descriptors.value_or(usbDescriptors(state))).c_str(), &error);
    check(error);
    return plugged_.back().printer;
}

void UsbTestbed::unplug(const std::shared_ptr<EmulatedUsbPrinter> &printer) {
    const UsbAddress address = printer->address();
    printer->unplug();
    umockdev_testbed_uevent(testbed_.get(), usbFolder(address).c_str(), "remove");
    // Each by itself: removing a device leaves the links to its interfaces, over which every later look
    // stumbles.
    for (unsigned interface = 0; interface <= usbPrinterInterface; ++interface)
        umockdev_testbed_remove_device(testbed_.get(), usbInterfaceFolder(address, interface).c_str());
    umockdev_testbed_remove_device(testbed_.get(), usbFolder(address).c_str());
}

void UsbTestbed::forgetUnplugged() {
    std::erase_if(plugged_, [&](const Plugged &plugged) {
        const bool forgotten = plugged.printer->isUnplugged() && plugged.printer->opens() == 0;
        if (forgotten)
            umockdev_testbed_detach_ioctl(testbed_.get(), usbNodePath(plugged.printer->address()).c_str(),
                                          nullptr);
        return forgotten;
    });
}

#ifdef __SANITIZE_THREAD__
// These libraries are not built for the thread sanitizer, which does not see how they hand things over.
extern "C" const char *__tsan_default_suppressions() {
    return "race:libumockdev.so\nrace:libglib-2.0.so\nrace:libudev.so\n";
}
#endif

#ifdef __SANITIZE_ADDRESS__
// libusb keeps alternate settings that it read before a descriptor that it refuses.
extern "C" const char *__lsan_default_suppressions() {
    return "leak:libusb-1.0.so\n";
}
#endif
