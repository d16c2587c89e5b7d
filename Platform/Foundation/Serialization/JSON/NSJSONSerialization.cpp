// NSJSONSerialization's side of reading: options and errors.
#include "Platform/Foundation/Serialization/JSON/NSJSONSerialization.h"

#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Serialization/JSON/JSONBuilder.h"
#include "Platform/Foundation/System/CocoaError.h"
#include "Platform/Foundation/System/NSError.h"

namespace {

void fail(Ref<NSError> *error, const char *reason, std::size_t offset) {
    if (!error)
        return;
    const auto description = u"The data couldn’t be read because it isn’t in the correct format."_ns;
    *error = cocoaError(NSPropertyListReadCorruptError,
                        NSString::stringWithFormat("%s Around character %lu.", reason, offset), description);
}

} // namespace

id NSJSONSerialization::JSONObjectWithData(const Ref<NSData> &data, NSJSONReadingOptions options,
                                           Ref<NSError> *error) {
    if (!data || data->length() == 0) {
        fail(error, "No value.", 0);
        return nullptr;
    }
    JSONBuilder builder(options & NSJSONReadingOptions::MutableContainers);
    if (const auto failure =
            readJSON({reinterpret_cast<const char *>(data->bytes()), data->length()}, builder)) {
        fail(error, failure->reason.c_str(), failure->offset);
        return nullptr;
    }
    id result = builder.take();
    if (!(options & NSJSONReadingOptions::AllowFragments) && !as<NSArray>(result) &&
        !as<NSDictionary>(result)) {
        fail(error, "JSON text did not start with array or object and option to allow fragments not set.", 0);
        return nullptr;
    }
    return result;
}
