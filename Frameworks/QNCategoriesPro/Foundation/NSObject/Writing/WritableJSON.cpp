#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Writing/WritableJSON.h"

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Values/ModelWalk.h"
#include "Platform/Foundation/Collections/NSNull.h"
#include "Platform/Foundation/Collections/ObjectVisit.h"
#include "Platform/Foundation/Numbers/NSNumber.h"
#include "Platform/Foundation/Text/NSString.h"

#include <cmath>

namespace {

using Visit = ObjectVisit<struct MakingWritable>;

Ref<NSString> writableText(const NSString &text) {
    return NSString::stringWithUTF8String(text.utf8());
}

} // namespace

id qn::writableJSON(const id &json) {
    if (const auto *text = peek<NSString>(json))
        return writableText(*text);
    if (const auto *number = peek<NSNumber>(json))
        return std::isfinite(number->doubleValue()) ? json : nullptr;
    const auto *dictionary = peek<NSDictionary>(json);
    const auto *array = peek<NSArray>(json);
    if (!dictionary && !array)
        return json;
    if (!Visit::admits(*json)) // a hook may have led it back to itself
        return nullptr;
    const Visit visit(*json);
    if (array) {
        std::vector<id> made;
        walkElements(*array, [&](const id &element) {
            if (id written = writableJSON(element))
                made.push_back(std::move(written));
        });
        return NSArray::arrayWithObjects(std::move(made));
    }
    const auto made = NSMutableDictionary::dictionaryWithCapacity(dictionary->count());
    walkEntries(*dictionary, [&](const id &key, const id &value) {
        const id written = writableJSON(value);
        const auto *text = peek<NSString>(key);
        made->setObject(written ? written : NSNull::null(), text ? writableText(*text) : key);
    });
    return made;
}
