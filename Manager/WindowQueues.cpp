#include "Manager/WindowQueues.h"

#include "Manager/SupportedPrinterModels.h"
#include "Manager/SupportedQueues.h"
#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/System/NSBundle.h"

namespace {

WindowQueues::State stateOf(SupportedQueues::Outcome outcome) {
    switch (outcome) {
    case SupportedQueues::Outcome::matching:
        return WindowQueues::State::found;
    case SupportedQueues::Outcome::noneSupported:
    case SupportedQueues::Outcome::noQueues:
        return WindowQueues::State::noneSupported;
    case SupportedQueues::Outcome::noPrintService:
        return WindowQueues::State::silent;
    case SupportedQueues::Outcome::noModels:
        break;
    }
    return WindowQueues::State::damaged;
}

} // namespace

WindowQueues readWindowQueues() {
    WindowQueues list;
    list.entries = NSMutableArray::array();
    const bool words =
        NSBundle::mainBundle().pathForResource("locale/en/LC_MESSAGES/Localizable", "mo").has_value();
    const SupportedQueues matching = matchQueues(
        supportedModels(), list.entries, [&list](const Ref<NSString> &name) { list.latestDestName = name; });
    list.state = words ? stateOf(matching.outcome) : WindowQueues::State::damaged;
    return list;
}
