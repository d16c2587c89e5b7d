#include "Platform/Foundation/NSISO8601DateFormatter.h"

#include "Platform/Foundation/FixedDatePattern.h"
#include "Platform/Foundation/NSDate.h"
#include "Platform/Foundation/NSString.h"
#include "Platform/Runtime/Class.h"

NS_IMPLEMENTATION(NSISO8601DateFormatter) {}

Ref<NSDate> NSISO8601DateFormatter::dateFromString(const Ref<NSString> &text) const {
    static const auto &pattern = *new FixedDatePattern(*FixedDatePattern::compile(u"yyyy-MM-dd'T'HH:mm:ssZ"));
    const auto seconds = text ? pattern.parse(text->units()) : std::nullopt;
    return seconds ? NSDate::dateWithTimeIntervalSince1970(*seconds) : nullptr;
}
