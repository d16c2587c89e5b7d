#include "Platform/Foundation/Collections/ObjectTable.h"

#include "Platform/Foundation/Collections/CollectionEnds.h"
#include "Platform/Foundation/Collections/ContentsHash.h"

#include <algorithm>
#include <utility>

namespace {

constexpr NSUInteger absent = NSNotFound;

NSUInteger spread(NSUInteger hash) {
    return (hash * 0x9E3779B97F4A7C15u) >> 20;
}

} // namespace

ObjectTable::~ObjectTable() {
    collections::Ends::letGo(entries_, [](std::vector<id> &kept, Entry &entry) {
        kept.push_back(std::move(entry.key));
        kept.push_back(std::move(entry.value));
    });
}

NSUInteger ObjectTable::hashOf(const id &key) const {
    return byContents_ ? contentsHash(key) : key->hash();
}

NSUInteger ObjectTable::locate(NSUInteger hash, const id &key) const {
    const auto matches = [&](const Entry &entry) {
        return entry.hash == hash && entry.key && (entry.key == key || entry.key->isEqual(key));
    };
    if (index_.empty()) {
        for (NSUInteger i = 0; i < entries_.size(); ++i)
            if (matches(entries_[i]))
                return i;
        return absent;
    }
    const NSUInteger mask = index_.size() - 1;
    for (NSUInteger slot = spread(hash) & mask; index_[slot]; slot = (slot + 1) & mask)
        if (matches(entries_[index_[slot] - 1]))
            return index_[slot] - 1;
    return absent;
}

const id *ObjectTable::find(const id &key) const {
    if (!key || !live_)
        return nullptr;
    const NSUInteger found = locate(hashOf(key), key);
    return found == absent ? nullptr : &entries_[found].value;
}

bool ObjectTable::set(id key, id value) {
    const NSUInteger hash = hashOf(key);
    if (const NSUInteger found = locate(hash, key); found != absent) {
        entries_[found].value.swap(value); // the former one is released last: its end may read the table
        return false;
    }
    append(hash, std::move(key), std::move(value));
    return true;
}

bool ObjectTable::add(id key, id value) {
    const NSUInteger hash = hashOf(key);
    if (locate(hash, key) != absent)
        return false;
    append(hash, std::move(key), std::move(value));
    return true;
}

void ObjectTable::append(NSUInteger hash, id key, id value) {
    entries_.emplace_back(hash, std::move(key), std::move(value));
    ++live_;
    if (entries_.size() > smallest && 2 * entries_.size() > index_.size()) {
        rebuild();
    } else if (!index_.empty()) {
        const NSUInteger mask = index_.size() - 1;
        NSUInteger slot = spread(hash) & mask, alike = 0;
        for (; index_[slot]; slot = (slot + 1) & mask)
            alike += entries_[index_[slot] - 1].hash == hash;
        index_[slot] = static_cast<std::uint32_t>(entries_.size());
        if (alike >= mostAlike && !byContents_)
            goByContents();
    }
}

void ObjectTable::goByContents() {
    byContents_ = true;
    for (Entry &entry : entries_)
        if (entry.key)
            entry.hash = hashOf(entry.key);
    rebuild();
}

NSUInteger ObjectTable::alike(const id &key) const {
    const NSUInteger hash = hashOf(key);
    const auto matches = [&](const Entry &entry) { return entry.key && entry.hash == hash; };
    if (index_.empty())
        return static_cast<NSUInteger>(std::ranges::count_if(entries_, matches));
    const NSUInteger mask = index_.size() - 1;
    NSUInteger count = 0;
    for (NSUInteger slot = spread(hash) & mask; index_[slot]; slot = (slot + 1) & mask)
        count += matches(entries_[index_[slot] - 1]);
    return count;
}

bool ObjectTable::remove(const id &key) {
    if (!key || !live_)
        return false;
    const NSUInteger found = locate(hashOf(key), key);
    if (found == absent)
        return false;
    // The removed entry is left empty, so that the index stays valid, until most entries are.
    const Entry released = std::exchange(entries_[found], Entry{});
    --live_;
    while (first_ < entries_.size() && !entries_[first_].key)
        ++first_;
    if (entries_.size() > smallest ? live_ < entries_.size() / 2 : found + 1 == entries_.size() || live_ == 0)
        rebuild();
    return true;
}

const ObjectTable::Entry *ObjectTable::next(NSUInteger &position) const {
    position = std::max(position, first_);
    while (position < entries_.size())
        if (const Entry &entry = entries_[position++]; entry.key)
            return &entry;
    return nullptr;
}

NSUInteger ObjectTable::keys(NSUInteger &position, id *keys, NSUInteger count) const {
    NSUInteger copied = 0;
    while (copied < count) {
        const Entry *entry = next(position);
        if (!entry)
            break;
        keys[copied++] = entry->key;
    }
    return copied;
}

void ObjectTable::rebuild() {
    std::erase_if(entries_, [](const Entry &entry) { return !entry.key; });
    first_ = 0;
    index_.clear();
    if (entries_.size() <= smallest)
        return;
    NSUInteger size = 2 * smallest;
    while (size < 4 * entries_.size())
        size *= 2;
    index_.resize(size);
    for (NSUInteger i = 0; i < entries_.size(); ++i) {
        NSUInteger slot = spread(entries_[i].hash) & (size - 1);
        while (index_[slot])
            slot = (slot + 1) & (size - 1);
        index_[slot] = static_cast<std::uint32_t>(i + 1);
    }
}
