// The hash table of ordinary dictionaries and sets. It keeps the order of insertion, so that walks,
// descriptions and tests are the same on every run. It holds less than 2^32 entries.
//
// Keys with the same hash are compared one by one. Collections have their count as the hash, so many keys may
// share one: with more than 16 such keys, a table switches to hashes of the keys' contents (ContentsHash.h).
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#include <span>
#include <vector>

#pragma GCC visibility push(default)

class ObjectTable {
public:
    struct Entry {
        NSUInteger hash = 0;
        id key; ///< none in a removed entry
        id value;

        Entry() = default;
        Entry(NSUInteger itsHash, id itsKey, id itsValue)
            : hash(itsHash), key(std::move(itsKey)), value(std::move(itsValue)) {}
    };

    /// Reserves memory for `count` entries.
    explicit ObjectTable(NSUInteger count = 0) { entries_.reserve(count); }
    ObjectTable(ObjectTable &&) = default;
    ObjectTable &operator=(ObjectTable &&) = default;
    /// Safe for entries that nest deeply; see CollectionEnds.h.
    ~ObjectTable();

    NSUInteger count() const { return live_; }
    /// In the order of insertion, with removed entries, which have no key. Valid until the table changes.
    std::span<const Entry> entries() const { return entries_; }
    /// The value of an equal key, or null. Valid until the table changes.
    const id *find(const id &key) const;
    /// Adds the entry at the end and returns true. If there is an equal key, only sets its value and returns
    /// false. The key must not be none.
    bool set(id key, id value);
    /// Adds the entry at the end; false, and nothing changes, if there is an equal key. The key must not be
    /// none.
    bool add(id key, id value);
    /// False when there is no equal key.
    bool remove(const id &key);
    /// With how many keys one is compared before it is added.
    NSUInteger alike(const id &key) const;

    /// The first live entry at or after `position`, which is moved behind it; null at the end.
    const Entry *next(NSUInteger &position) const;
    /// Copies at most `count` keys, starting at `position`, which is moved behind them; returns their number.
    NSUInteger keys(NSUInteger &position, id *keys, NSUInteger count) const;

private:
    static constexpr NSUInteger smallest = 8;   // entries; up to this number there is no index
    static constexpr NSUInteger mostAlike = 16; // keys with the same hash, before contents are hashed

    NSUInteger hashOf(const id &key) const;
    NSUInteger locate(NSUInteger hash, const id &key) const;
    void append(NSUInteger hash, id key, id value);
    void goByContents();
    void rebuild();

    std::vector<Entry> entries_;
    std::vector<std::uint32_t> index_; // hash table of entry number + 1, or 0; empty while the table is small
    NSUInteger live_ = 0;
    bool byContents_ = false; // the hashes are contentsHash's
    NSUInteger first_ = 0;    // all entries before it were removed: taking the first one need not search them
};

#pragma GCC visibility pop
