#include "Manager/SupportedQueues.h"

#include "Manager/PrintService.h"
#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/System/NSLog.h"
#include "Platform/Foundation/Text/NSString.h"

#include <algorithm>
#include <cups/cups.h>
#include <span>

namespace {

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

SupportedQueues outcomeOf(const PrintServiceAnswer &service, const Ref<NSArray> &models, bool matched) {
    using enum SupportedQueues::Outcome;
    return {.outcome = !models             ? noModels
                       : !service.answers  ? noPrintService
                       : matched           ? matching
                       : service.count > 0 ? noneSupported
                                           : noQueues,
            .destinations = service.count,
            .server = service.server,
            .service = service.version};
}

} // namespace

SupportedQueues matchQueues(const Ref<NSArray> &models, const Ref<NSMutableArray> &entries,
                            const std::function<void(const Ref<NSString> &destName)> &seen) {
    const PrintServiceAnswer service = askPrintService();
    NSLog("****numOfDests:%d", service.count);
    const auto known = models ? models : NSArray::array();
    const NSUInteger before = entries->count();
    for (const cups_dest_t &destination :
         std::span(service.queues.get(), static_cast<std::size_t>(std::max(service.count, 0)))) {
        if (seen)
            seen(text(destination.name));
        matchQueue(destination, *known, *entries);
    }
    return outcomeOf(service, models, entries->count() > before);
}
