#include "Platform/Foundation/Serialization/JSON/JSONBuilder.h"

#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Collections/ObjectTable.h"
#include "Platform/Foundation/Serialization/JSON/NSJSONSerialization.h"

#include <iterator>

bool JSONBuilder::EndObject(std::size_t count) {
    ObjectTable table(count);
    for (auto entry = pending_.end() - 2 * static_cast<std::ptrdiff_t>(count); entry != pending_.end();
         entry += 2)
        table.set(std::move(entry[0]), std::move(entry[1]));
    return close(2 * count, mutable_ ? NSMutableDictionary::dictionaryWithTable(std::move(table))
                                     : NSDictionary::dictionaryWithTable(std::move(table)));
}

bool JSONBuilder::EndArray(std::size_t count) {
    std::vector<id> elements(std::move_iterator(pending_.end() - static_cast<std::ptrdiff_t>(count)),
                             std::move_iterator(pending_.end()));
    return close(count, mutable_ ? NSMutableArray::arrayWithObjects(std::move(elements))
                                 : NSArray::arrayWithObjects(std::move(elements)));
}

bool JSONBuilder::enter() {
    tooDeep_ = depth_ == NSJSONSerialization::deepestNesting;
    depth_ += tooDeep_ ? 0 : 1;
    return !tooDeep_;
}

bool JSONBuilder::close(std::size_t used, id container) {
    leave();
    pending_.resize(pending_.size() - used);
    return add(std::move(container));
}
