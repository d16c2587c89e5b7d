// Splitting texts: here, since the result is an array.
#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Raise.h"

Ref<NSArray> NSString::componentsSeparatedByString(const Ref<NSString> &separator) const {
    runtime::checkObject("NSString componentsSeparatedByString:", separator);
    const auto parts = NSMutableArray::array();
    std::size_t at = 0;
    for (std::size_t found;
         !separator->units_.empty() && (found = units_.find(separator->units_, at)) != std::u16string::npos;
         at = found + separator->length())
        parts->addObject(make<NSString>(units_.substr(at, found - at)));
    parts->addObject(make<NSString>(units_.substr(at)));
    return as<NSArray>(parts->copy());
}
