#include "Frameworks/QNCategoriesPro/Foundation/NSObject/FoundationKind.h"

#include "Platform/Foundation/NSArray.h"
#include "Platform/Foundation/NSData.h"
#include "Platform/Foundation/NSDate.h"
#include "Platform/Foundation/NSDecimalNumber.h"
#include "Platform/Foundation/NSDictionary.h"
#include "Platform/Foundation/NSSet.h"
#include "Platform/Foundation/NSString.h"
#include "Platform/Foundation/NSURL.h"
#include "Platform/Runtime/Class.h"

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
