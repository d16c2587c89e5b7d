#include "Manager/QueueMatching.h"

#include "Platform/Foundation/NSArray.h"
#include "Platform/Foundation/NSDictionary.h"
#include "Platform/Foundation/NSLog.h"
#include "Platform/Foundation/NSString.h"

#include <cups/cups.h>
#include <memory>

namespace {

/// The queues of the default server, released at the end.
class Destinations {
public:
    Destinations() : count_(cupsGetDests2(CUPS_HTTP_DEFAULT, &list_)) {}
    Destinations(const Destinations &) = delete;
    Destinations &operator=(const Destinations &) = delete;
    ~Destinations() { cupsFreeDests(count_, list_); }

    int count() const { return count_; }
    const cups_dest_t *begin() const { return list_; }
    const cups_dest_t *end() const { return list_ + (count_ > 0 ? count_ : 0); }

private:
    cups_dest_t *list_ = nullptr;
    int count_;
};

const char *option(const cups_dest_t &destination, const char *name) {
    return cupsGetOption(name, destination.num_options, destination.options);
}

Ref<NSString> text(const char *bytes) {
    return bytes ? NSString::stringWithUTF8String(bytes) : nullptr;
}

void setIfPresent(NSMutableDictionary &entry, const Ref<NSString> &key, const Ref<NSString> &value) {
    if (value)
        entry.setObject(value, key);
}

void matchQueue(const cups_dest_t &destination, const NSArray &models, NSMutableArray &entries) {
    const auto makeAndModel = NSString::stringWithASCIIString(option(destination, "printer-make-and-model"));
    const auto info = text(option(destination, "printer-info"));
    NSLog("printerDriverName:%@", info);
    const auto deviceUri = text(option(destination, "device-uri"));
    for (const id &model : models) {
        const auto description = as<NSDictionary>(model);
        const auto ppdModel = description ? as<NSString>(description->objectForKey(u"ppdModel"_ns)) : nullptr;
        if (!makeAndModel || !makeAndModel->isEqualToString(ppdModel))
            continue;
        NSLog("%@ *** %@;***printerDriverName:%@\n", makeAndModel, ppdModel, info);
        const auto entry = NSMutableDictionary::dictionary();
        setIfPresent(*entry, u"displayName"_ns, info);
        setIfPresent(*entry, u"hideName"_ns, text(destination.name));
        setIfPresent(*entry, u"deviceUri"_ns, deviceUri);
        entries.addObject(entry);
    }
}

/// An empty list is also how CUPS says that nobody answered.
QueueMatching outcomeOf(const Destinations &destinations) {
    if (destinations.count() > 0)
        return {destinations.count(), true, {}};
    const ipp_status_t status = cupsLastError();
    const bool answered = status <= IPP_STATUS_OK_EVENTS_COMPLETE || status == IPP_STATUS_ERROR_NOT_FOUND;
    return {0, answered, answered ? std::string() : cupsServer()};
}

} // namespace

QueueMatching matchQueues(const Ref<NSArray> &models, const Ref<NSMutableArray> &entries,
                          const std::function<void(const Ref<NSString> &destName)> &seen) {
    const Destinations destinations;
    QueueMatching outcome = outcomeOf(destinations);
    NSLog("****numOfDests:%d", destinations.count());
    const auto known = models ? models : NSArray::array();
    for (const cups_dest_t &destination : destinations) {
        if (seen)
            seen(text(destination.name));
        matchQueue(destination, *known, *entries);
    }
    return outcome;
}
