#include "Platform/Foundation/Dates/NSISO8601DateFormatter.h"

#include "Platform/Foundation/Dates/FixedDatePattern.h"
#include "Platform/Foundation/Dates/NSDate.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Class.h"

NS_IMPLEMENTATION(NSISO8601DateFormatter) {}

Ref<NSDate> NSISO8601DateFormatter::dateFromString(const Ref<NSString> &text) const {
    static const auto &pattern = *new FixedDatePattern(*FixedDatePattern::compile(u"yyyy-MM-dd'T'HH:mm:ssZ"));
    const auto seconds = text ? pattern.parse(text->units()) : std::nullopt;
    return seconds ? NSDate::dateWithTimeIntervalSince1970(*seconds) : nullptr;
}
