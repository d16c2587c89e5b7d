// Walks through a property list for a writer: tells it what each object is, and the caller where something
// stands that a property list cannot hold.
//
//     if (!walk.whole(list))
//         …walk.refusal(): "At levels[1]: expected a finite date."
//
// Threads: one at a time.
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

    // What there is to write. False for what the format cannot hold, by `refuse`.
    virtual bool text(const NSString &text) = 0;
    virtual bool key(const NSString &key) { return text(key); }
    virtual bool number(const NSNumber &number) = 0;
    virtual bool date(const NSDate &date) = 0;
    virtual bool data(const NSData &data) = 0;
    virtual bool reference(const PropertyListUID &reference) = 0;
    /// These visit their parts.
    virtual bool array(std::span<const id> elements) = 0;
    virtual bool dictionary(std::span<const Entry> entries) = 0;

    bool visitElement(std::span<const id> elements, std::size_t index);
    bool visitKey(const Entry &entry);
    bool visitValue(const Entry &entry);

    bool refuse(std::string expected);

private:
    bool visit(const id &object);
    bool visitArray(const NSArray &array);
    bool visitDictionary(const NSDictionary &dictionary);
    bool fail(const std::string &step);

    unsigned depth_ = 0;
    std::string place_; ///< of what was refused: the steps to it
    std::string expected_;
};
