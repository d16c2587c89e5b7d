// Walks through a property list for a writer, which is a subclass. Reports the place of an object that cannot
// be written:
//
//     if (!walk.whole(list))
//         …walk.refusal(): "At levels[1]: expected a finite date."
//
// A walk belongs to one thread at a time.
#pragma once

#include "Platform/Foundation/Collections/ObjectTable.h"
#include "Platform/Runtime/Object/NSObject.h"

#include <span>
#include <string>
#include <utility>
#include <vector>

class NSArray;
class NSData;
class NSDate;
class NSDictionary;
class NSNumber;
class NSString;
class PropertyListUID;

class PropertyListWalk {
public:
    virtual ~PropertyListWalk() = default;

    /// False, and `refusal` says why, when the list or a part of it cannot be written.
    bool whole(const id &list);
    std::string refusal() const;

protected:
    using Entry = std::pair<const NSString *, const id *>;

    // These write an object. They return `refuse(…)` when the format cannot express it.
    virtual bool text(const NSString &text) = 0;
    virtual bool key(const NSString &key) { return text(key); }
    virtual bool number(const NSNumber &number) = 0;
    virtual bool date(const NSDate &date) = 0;
    virtual bool data(const NSData &data) = 0;
    virtual bool reference(const PropertyListUID &reference) = 0;
    /// These must visit the parts of the container.
    virtual bool array(std::span<const id> elements) = 0;
    virtual bool dictionary(std::span<const Entry> entries) = 0;

    bool visitElement(std::span<const id> elements, std::size_t index);
    bool visitKey(const Entry &entry);
    bool visitValue(const Entry &entry);

    /// Stores what was expected; returns false.
    bool refuse(std::string expected);

private:
    bool visit(const id &object);
    bool visitArray(const NSArray &array);
    bool visitDictionary(const NSDictionary &dictionary);
    bool fail(const std::string &step);

    unsigned depth_ = 0;
    std::string place_; ///< of the refused object: the path to it
    std::string expected_;
};
