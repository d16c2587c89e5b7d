// NSJSONSerialization's side of writing: options, errors and the check of the top level.
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Serialization/JSON/JSONValidity.h"
#include "Platform/Foundation/Serialization/JSON/JSONWriter.h"
#include "Platform/Foundation/System/CocoaError.h"
#include "Platform/Foundation/System/NSError.h"
#include "Platform/Foundation/Text/NSString.h"

namespace {

Ref<NSData> fail(Ref<NSError> *error, const char *reason) {
    if (error)
        *error = cocoaError(NSPropertyListWriteInvalidError, NSString::stringWithFormat("%s", reason),
                            u"The data couldn’t be written because it isn’t in the correct format."_ns);
    return nullptr;
}

bool isContainer(const id &object) {
    const json::Kind kind = json::kindOf(object.get());
    return kind == json::Kind::array || kind == json::Kind::dictionary;
}

} // namespace

bool NSJSONSerialization::isValidJSONObject(const id &object) {
    return isContainer(object) && !JSONValidity().whyInvalid(object);
}

Ref<NSData> NSJSONSerialization::dataWithJSONObject(const id &object, NSJSONWritingOptions options,
                                                    Ref<NSError> *error) {
    if (!isContainer(object) && !(options & NSJSONWritingOptions::FragmentsAllowed))
        return fail(error, "Invalid top-level type: neither array nor dictionary.");
    JSONWriter writer(options);
    if (json::Reason reason = writer.value(object))
        return fail(error, reason);
    return make<NSData>(writer.take());
}
