// Writes JSON as UTF-8: whole values, or piece by piece.
//
// A writer belongs to one thread at a time.
#pragma once

#include "Platform/Foundation/Serialization/JSON/JSONOutput.h"
#include "Platform/Foundation/Serialization/JSON/JSONWalk.h"
#include "Platform/Foundation/Serialization/JSON/NSJSONSerialization.h"

#include <array>

#pragma GCC visibility push(default)

class NSNumber;

class JSONWriter {
public:
    explicit JSONWriter(NSJSONWritingOptions options);

    std::vector<std::uint8_t> take() { return out_.take(); }

    // These return why they failed, with part of the value written by then; null on success.
    json::Reason value(const id &object);
    json::Reason string(const NSString &text);
    /// Containers nest up to `NSJSONSerialization::deepestNesting`.
    json::Reason open(char bracket);

    void close(char bracket) {
        --depth_;
        startLine();
        out_.put(bracket);
    }
    void number(bool value) { out_.put(value ? "true" : "false"); }
    void number(std::int64_t value);
    void number(std::uint64_t value);
    /// Finite; the fewest digits that read back equal.
    void number(double value);
    /// Writes the text unchanged: punctuation, or a string that `string` has written before.
    void put(std::string_view text) { out_.put(text); }
    std::size_t size() const { return out_.size(); }
    /// Drops what was written since the size was that. Brackets must not be dropped.
    void cutTo(std::size_t size) { out_.cutTo(size); }

    /// The containers of the last refused value that contain the refused object, the innermost first. When
    /// the reason was `invalidType` or `notText`, none of them can be written by itself either.
    std::vector<id> takeRefusedContainers() { return std::move(refusedContainers_); }

private:
    template <class Visit>
    json::Reason entries(const NSDictionary &dictionary, Visit visit) const;
    json::Reason entry(const id &key, const id &object);
    /// `items` writes the elements; it calls its argument before each.
    template <class Items>
    json::Reason list(const id &container, const char (&brackets)[3], Items items);
    json::Reason number(const NSNumber &number);
    std::size_t putPlain(const char16_t *units, std::size_t count, char *out) const;
    char *escaped(char *out, char16_t unit) const;
    void startLine();

    const bool pretty_;
    const bool sorted_;
    std::array<char, 128> escapes_;
    std::size_t depth_ = 0;
    JSONOutput out_;
    std::vector<id> refusedContainers_;
};

#pragma GCC visibility pop
