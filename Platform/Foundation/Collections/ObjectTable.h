// The store behind ordinary dictionaries and sets: a hash table of objects that keeps the order of insertion,
// so that walks, descriptions and tests are the same on every run.
//
// Keys of one hash, which arrays of one length have, are compared one by one. A table that meets many of them
// goes by what its keys contain instead, so that no choice of keys makes it slow.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <span>
#include <vector>

class ObjectTable {
public:
    struct Entry {
        NSUInteger hash = 0;
        id key; ///< none in an entry that was removed
        id value;

        Entry() = default;
        Entry(NSUInteger itsHash, id itsKey, id itsValue)
            : hash(itsHash), key(std::move(itsKey)), value(std::move(itsValue)) {}
    };

    /// With room for `count` entries.
    explicit ObjectTable(NSUInteger count = 0) { entries_.reserve(count); }
    ObjectTable(ObjectTable &&) = default;
    ObjectTable &operator=(ObjectTable &&) = default;
    /// However deep its entries nest.
    ~ObjectTable();

    NSUInteger count() const { return live_; }
    /// In the order of insertion; one without a key was removed. Valid until the table changes.
    std::span<const Entry> entries() const { return entries_; }
    /// The value of an equal key, or null.
    const id *find(const id &key) const;
    /// Sets the value of an equal key, which stays as it is (false), or adds the entry at the end (true).
    bool set(id key, id value);
    /// Adds the entry at the end, unless there is an equal key (false).
    bool add(id key, id value);
    bool remove(const id &key);

    /// The first live entry at or after `position`, which moves behind it; null at the end.
    const Entry *next(NSUInteger &position) const;
    /// Copies at most `count` of the keys at or after `position`, which moves behind them, and says how many.
    NSUInteger keys(NSUInteger &position, id *keys, NSUInteger count) const;

private:
    static constexpr NSUInteger smallest = 8;   // up to here a walk beats an index
    static constexpr NSUInteger mostAlike = 16; // keys of one hash, before the table goes by contents

    NSUInteger hashOf(const id &key) const;
    NSUInteger locate(NSUInteger hash, const id &key) const;
    void append(NSUInteger hash, id key, id value);
    void goByContents();
    void rebuild();

    std::vector<Entry> entries_;
    std::vector<std::uint32_t> index_; // entry number + 1, 0 when free; empty while the table is small
    NSUInteger live_ = 0;
    bool byContents_ = false; // the hashes are those of what the keys contain
    NSUInteger first_ = 0; // gaps only before it, so that taking entries from the front does not search them
};
