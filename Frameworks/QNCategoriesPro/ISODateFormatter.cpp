#include "Frameworks/QNCategoriesPro/ISODateFormatter.h"

#include "Platform/Foundation/Text/NSLocale.h"
#include "Platform/Foundation/Text/NSString.h"

const NSDateFormatter &qn::ISODateFormatter() {
    static const auto &formatter = *new Ref<NSDateFormatter>(
        make<NSDateFormatter>(u"yyyy-MM-dd'T'HH:mm:ssZ"_ns, NSLocale::posixLocale()));
    return *formatter;
}
