#include "Platform/Foundation/System/NSThread.h"

#include "Platform/Runtime/Object/NSException.h"

#include <system_error>
#include <thread>

void NSThreadDetachNewThread(std::function<void()> block) {
    if (!block)
        throw NSException(NSInvalidArgumentException, "NSThreadDetachNewThread: block cannot be nil");
    try {
        std::thread(std::move(block)).detach();
    } catch (const std::system_error &error) {
        throw NSException(NSGenericException, std::string("NSThreadDetachNewThread: ") + error.what());
    }
}
