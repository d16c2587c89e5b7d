#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/FoundationKind.h"

#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Collections/NSSet.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Dates/NSDate.h"
#include "Platform/Foundation/Numbers/NSDecimalNumber.h"
#include "Platform/Foundation/System/NSURL.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/Class.h"

#include <utility>

qn::FoundationKind qn::foundationKindOf(Class cls) {
    // Each class before its superclass.
    const std::pair<Class, FoundationKind> kinds[] = {
        {NSMutableString::class_(), FoundationKind::MutableString},
        {NSString::class_(), FoundationKind::String},
        {NSDecimalNumber::class_(), FoundationKind::DecimalNumber},
        {NSNumber::class_(), FoundationKind::Number},
        {NSValue::class_(), FoundationKind::Value},
        {NSMutableData::class_(), FoundationKind::MutableData},
        {NSData::class_(), FoundationKind::Data},
        {NSDate::class_(), FoundationKind::Date},
        {NSURL::class_(), FoundationKind::URL},
        {NSMutableArray::class_(), FoundationKind::MutableArray},
        {NSArray::class_(), FoundationKind::Array},
        {NSMutableDictionary::class_(), FoundationKind::MutableDictionary},
        {NSDictionary::class_(), FoundationKind::Dictionary},
        {NSMutableSet::class_(), FoundationKind::MutableSet},
        {NSSet::class_(), FoundationKind::Set},
    };
    for (const auto &[base, kind] : kinds)
        if (cls && cls->isSubclassOf(base))
            return kind;
    return FoundationKind::None;
}
