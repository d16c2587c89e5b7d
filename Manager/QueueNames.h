// What people call the queues of the table.
//
// Threads: the thread that the entries belong to.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSString/Pinyin/PinyinText.h"

#include <vector>

class NSArray;
class NSString;

struct QueueName {
    Ref<NSString> text;       ///< the queue's description, or its name when it has none
    Ref<NSString> queue;      ///< the queue's name
    bool isQueueName = false; ///< there is no description
    bool isShared = false;    ///< another queue has the same text
    qn::PinyinText soughtText{text}, soughtQueue{queue};

    /// Whether either has what somebody typed, Chinese also by its pinyin.
    bool isFoundBy(const Ref<NSString> &typed) const;
    /// Whether the text begins with it.
    bool beginsWith(const Ref<NSString> &typed) const;
};

/// The names of table entries (see QueueMatching.h), one an entry.
std::vector<QueueName> queueNames(const NSArray &entries);
