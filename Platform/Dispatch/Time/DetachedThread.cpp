#include "Platform/Dispatch/Time/DetachedThread.h"

#include <system_error>
#include <thread>

namespace dispatch {

bool startDetachedThread(std::function<void()> function) {
    try {
        std::thread(std::move(function)).detach();
        return true;
    } catch (const std::system_error &) {
        return false;
    }
}

} // namespace dispatch
