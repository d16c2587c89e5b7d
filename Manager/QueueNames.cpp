#include "Manager/QueueNames.h"

#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Text/NSString.h"

#include <map>

namespace {

Ref<NSString> textOf(const NSDictionary &entry, const Ref<NSString> &key) {
    const auto text = as<NSString>(entry.objectForKey(key));
    return text ? text : NSString::string();
}

bool isBlank(const NSString &text) {
    return text.units().find_first_not_of(u" \t\n\r\u00A0\u3000") == std::u16string::npos;
}

QueueName nameOf(const id &object) {
    const auto entry = as<NSDictionary>(object);
    if (!entry)
        return {NSString::string(), NSString::string()};
    const auto description = textOf(*entry, u"displayName"_ns), queue = textOf(*entry, u"hideName"_ns);
    const bool blank = isBlank(*description);
    return {blank ? queue : description, queue, blank};
}

} // namespace

bool QueueName::isFoundBy(const Ref<NSString> &typed) const {
    return soughtText.rangeOf(typed).length > 0 || soughtQueue.rangeOf(typed).length > 0;
}

bool QueueName::beginsWith(const Ref<NSString> &typed) const {
    return soughtText.hasPrefix(typed);
}

std::vector<QueueName> queueNames(const NSArray &entries) {
    std::vector<QueueName> names;
    std::map<std::u16string, int> uses;
    for (const id &entry : entries) {
        names.push_back(nameOf(entry));
        ++uses[names.back().text->units()];
    }
    for (QueueName &name : names)
        name.isShared = uses[name.text->units()] > 1;
    return names;
}
