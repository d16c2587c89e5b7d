// The names under which people know the queues of the table.
//
// Threads: one at a time; searches prepare what they need.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSString/Pinyin/PinyinText.h"

#include <vector>

class NSArray;
class NSString;

struct QueueName {
    Ref<NSString> text;       ///< the queue's description, or its name when it has none
    Ref<NSString> queue;      ///< the queue's name
    bool isQueueName = false; ///< `text` is the queue's name, as there is no description
    bool isShared = false;    ///< another queue has the same text
    qn::PinyinText soughtText{text}, soughtQueue{queue};

    /// Whether one of the two contains what was typed, Chinese also by its pinyin (PinyinText.h).
    bool isFoundBy(const Ref<NSString> &typed) const;
    /// Whether the text begins with what was typed, in the same way.
    bool beginsWith(const Ref<NSString> &typed) const;
};

/// One name per table entry (see SupportedQueues.h), in their order.
std::vector<QueueName> queueNames(const NSArray &entries);
