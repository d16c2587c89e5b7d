#include "Platform/Foundation/NSThread.h"

#include <thread>

void NSThreadDetachNewThread(std::function<void()> block) {
    std::thread(std::move(block)).detach();
}
