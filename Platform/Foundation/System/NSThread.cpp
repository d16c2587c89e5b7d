#include "Platform/Foundation/System/NSThread.h"

#include "Platform/Dispatch/Time/BlockArgument.h"
#include "Platform/Dispatch/Time/DetachedThread.h"

void NSThreadDetachNewThread(std::function<void()> block) {
    dispatch::checkBlock("NSThreadDetachNewThread", block);
    if (!dispatch::startDetachedThread(std::move(block)))
        throw NSException(NSGenericException, "NSThreadDetachNewThread: no thread can be had");
}
