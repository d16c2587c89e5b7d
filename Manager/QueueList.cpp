#include "Manager/QueueList.h"

#include "Manager/QueueMatching.h"
#include "Manager/SupportedModels.h"
#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/System/NSBundle.h"

namespace {

QueueList::State stateOf(QueueMatching::Outcome outcome) {
    switch (outcome) {
    case QueueMatching::Outcome::matching:
        return QueueList::State::found;
    case QueueMatching::Outcome::noneSupported:
    case QueueMatching::Outcome::noQueues:
        return QueueList::State::noneSupported;
    case QueueMatching::Outcome::noPrintService:
        return QueueList::State::silent;
    case QueueMatching::Outcome::noModels:
        break;
    }
    return QueueList::State::damaged;
}

} // namespace

QueueList readQueueList() {
    QueueList list;
    list.entries = NSMutableArray::array();
    const bool words =
        NSBundle::mainBundle().pathForResource("locale/en/LC_MESSAGES/Localizable", "mo").has_value();
    const QueueMatching matching = matchQueues(
        supportedModels(), list.entries, [&list](const Ref<NSString> &name) { list.latestDestName = name; });
    list.state = words ? stateOf(matching.outcome) : QueueList::State::damaged;
    return list;
}
