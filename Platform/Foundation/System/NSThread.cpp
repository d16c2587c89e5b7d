#include "Platform/Foundation/System/NSThread.h"

#include "Platform/Dispatch/Time/DetachedThread.h"
#include "Platform/Runtime/Object/NSException.h"

void NSThreadDetachNewThread(std::function<void()> block) {
    runtime::checkBlock("NSThreadDetachNewThread", block);
    if (!dispatch::startDetachedThread(std::move(block)))
        throw NSException(NSGenericException, "NSThreadDetachNewThread: no thread can be had");
}
