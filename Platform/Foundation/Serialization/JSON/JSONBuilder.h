// Builds the objects of a JSON text while it is read. Of equal keys of a dictionary the last one counts.
//
// A builder belongs to one thread at a time.
#pragma once

#include "Platform/Foundation/Serialization/JSON/JSONReader.h"
#include "Platform/Foundation/Serialization/JSON/JSONScalars.h"

#include <vector>

#pragma GCC visibility push(default)

class JSONBuilder final : public JSONHandler {
public:
    explicit JSONBuilder(bool mutableContainers) : mutable_(mutableContainers) {}

    JSONScalars &scalars() { return scalars_; }

    /// The value completed last. There must be one.
    id take() {
        id value = std::move(pending_.back());
        pending_.pop_back();
        return value;
    }
    /// Why the builder ended the reading; null if it did not.
    const char *refusal() const override {
        return tooDeep_ ? "Too many nested arrays or dictionaries." : scalars_.refusal();
    }

    /// To be called at the start and the end of a container. `enter` returns false when containers would nest
    /// deeper than `NSJSONSerialization::deepestNesting`.
    bool enter();
    void leave() { --depth_; }

    /// Adds a value to the open container. False for none.
    bool add(id value) {
        if (!value)
            return false;
        pending_.push_back(std::move(value));
        return true;
    }

    // JSONHandler.
    bool Null() override { return add(scalars_.null()); }
    bool Bool(bool flag) override { return add(scalars_.boolean(flag)); }
    bool Int64(std::int64_t number) override { return add(scalars_.number(number)); }
    bool Uint64(std::uint64_t number) override { return add(scalars_.number(number)); }
    bool Double(double number) override { return add(scalars_.number(number)); }
    bool String(std::string_view bytes) override { return add(scalars_.text(bytes)); }
    bool Key(std::string_view bytes) override { return add(scalars_.key(bytes)); }
    bool StartObject() override { return enter(); }
    bool StartArray() override { return enter(); }
    bool EndObject(std::size_t count) override;
    bool EndArray(std::size_t count) override;

private:
    bool close(std::size_t used, id container);

    const bool mutable_;
    JSONScalars scalars_;
    /// The parts of the open containers: the elements of an array, or keys and values alternately. The end of
    /// a container says how many are its own.
    std::vector<id> pending_;
    std::size_t depth_ = 0;
    bool tooDeep_ = false;
};

#pragma GCC visibility pop
