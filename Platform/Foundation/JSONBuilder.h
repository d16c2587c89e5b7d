// Builds the objects of a JSON text while JSONReader walks it.
//
// Threads: one at a time.
#pragma once

#include "Platform/Foundation/JSONLeaves.h"

#include <vector>

class JSONBuilder {
public:
    explicit JSONBuilder(bool mutableContainers) : mutable_(mutableContainers) {}

    JSONLeaves &leaves() { return leaves_; }

    /// The value that was told last, when it is whole.
    id take() {
        id value = std::move(pending_.back());
        pending_.pop_back();
        return value;
    }
    /// Why reading ended; null while there is no reason.
    const char *refusal() const {
        return tooDeep_ ? "Too many nested arrays or dictionaries." : leaves_.refusal();
    }

    /// Go down into a container, and up again. Containers nest up to `NSJSONSerialization::deepestNesting`,
    /// which bounds the recursion of the reader, too.
    bool enter();
    void leave() { --depth_; }

    /// Puts in a value, as if it were told. False for none.
    bool add(id value) {
        if (!value)
            return false;
        pending_.push_back(std::move(value));
        return true;
    }

    // What the reader tells.
    bool Null() { return add(leaves_.null()); }
    bool Bool(bool flag) { return add(leaves_.boolean(flag)); }
    bool Int(int number) { return Int64(number); }
    bool Uint(unsigned number) { return Int64(number); }
    bool Int64(std::int64_t number) { return add(leaves_.number(number)); }
    bool Uint64(std::uint64_t number) { return add(leaves_.number(number)); }
    bool Double(double number) { return add(leaves_.number(number)); }
    bool RawNumber(const char *, unsigned, bool) { return false; }
    bool String(const char *bytes, unsigned length, bool) { return add(leaves_.text({bytes, length})); }
    bool Key(const char *bytes, unsigned length, bool) { return add(leaves_.key({bytes, length})); }
    bool StartObject() { return enter(); }
    bool StartArray() { return enter(); }
    bool EndObject(unsigned count);
    bool EndArray(unsigned count);

private:
    bool close(std::size_t used, id container);

    const bool mutable_;
    JSONLeaves leaves_;
    /// What is open waits here: the elements of an array, or keys and values in turn, until the end tells how
    /// many there are.
    std::vector<id> pending_;
    std::size_t depth_ = 0;
    bool tooDeep_ = false;
};
