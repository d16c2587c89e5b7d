#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Writing/ModelWriting.h"

#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/NSAttributedString.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Collections/NSNull.h"
#include "Platform/Foundation/Collections/NSSet.h"
#include "Platform/Foundation/Data/NSData.h"
#include "Platform/Foundation/Dates/NSDate.h"
#include "Platform/Foundation/Numbers/NSNumber.h"
#include "Platform/Foundation/System/NSURL.h"
#include "Platform/Foundation/Text/NSString.h"
#include "Platform/Runtime/Object/KindOfClass.h"

qn::WrittenKind qn::writtenKindOf(const NSObject &object) {
    using Kind = WrittenKind;
    static const std::pair<Class, Kind> kinds[] = {{NSString::class_(), Kind::Text},
                                                   {NSNumber::class_(), Kind::Plain},
                                                   {NSDate::class_(), Kind::Date},
                                                   {NSURL::class_(), Kind::URL},
                                                   {NSArray::class_(), Kind::Array},
                                                   {NSDictionary::class_(), Kind::Dictionary},
                                                   {NSNull::class_(), Kind::Plain},
                                                   {NSSet::class_(), Kind::Set},
                                                   {NSAttributedString::class_(), Kind::AttributedString},
                                                   {NSData::class_(), Kind::Data}};
    return runtime::kindOfClass(&object, kinds, Kind::Model);
}

bool qn::isNull(const id &object) {
    return !object || peek<NSNull>(object);
}
