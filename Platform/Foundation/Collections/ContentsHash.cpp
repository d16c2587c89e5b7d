#include "Platform/Foundation/Collections/ContentsHash.h"

#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Collections/NSSet.h"
#include "Platform/Foundation/Data/KeyedHash.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace {

constinit VisitParts visitParts = nullptr;

using Words = std::vector<NSUInteger>;

NSUInteger hashOfWords(const Words &words) {
    return keyedHash(words.data(), words.size() * sizeof words[0]);
}

/// Of an object of parts, by what `hashOf` says of them; 0 of one that has none.
template <class HashOf>
NSUInteger hashOfParts(const id &object, const HashOf &hashOf) {
    Words words{reinterpret_cast<NSUInteger>(object->isa())};
    const auto visit = [&](const id &part) { words.push_back(part ? hashOf(part) : 0); };
    return visitParts && visitParts(object, visit) ? hashOfWords(words) : 0;
}

/// One walk through a collection. Whether it goes too far depends on what the collection holds and never on
/// the order, so that equal ones agree in it.
class Contents {
public:
    bool goesTooFar() const { return tooFar_; }

    NSUInteger hashOf(const id &object) {
        if (tooFar_ || objects_ == mostObjects || depth_ == mostLevels) {
            tooFar_ = true;
            return 0;
        }
        ++objects_;
        ++depth_;
        const NSUInteger hash = hashOfAny(object);
        --depth_;
        return hash;
    }

private:
    static constexpr NSUInteger mostObjects = 1 << 18, mostLevels = 512;

    NSUInteger hashOfAny(const id &object) {
        if (const auto *array = peek<NSArray>(object)) {
            Words words;
            for (const id &element : array->allObjects())
                words.push_back(hashOf(element));
            return hashOfWords(words);
        }
        NSUInteger sum = 0; // in no order
        if (const auto *dictionary = peek<NSDictionary>(object)) {
            for (const auto &[key, value] : dictionary->allEntries())
                sum += hashOfWords({hashOf(key), hashOf(value)});
            return keyedHash(sum);
        }
        if (const auto *set = peek<NSSet>(object)) {
            for (const id &element : *set)
                sum += keyedHash(hashOf(element));
            return keyedHash(sum);
        }
        return hashOfOwn(object);
    }

    NSUInteger hashOfOwn(const id &object) {
        if (std::ranges::find(open_, object.get()) != open_.end()) { // without end
            tooFar_ = true;
            return 0;
        }
        open_.push_back(object.get());
        const NSUInteger hash = hashOfParts(object, [this](const id &part) { return hashOf(part); });
        open_.pop_back();
        return hash ? hash : object->hash();
    }

    std::vector<const NSObject *> open_; // of those that are no collections
    NSUInteger objects_ = 0, depth_ = 0;
    bool tooFar_ = false;
};

} // namespace

NSUInteger contentsHash(const id &object) {
    const auto hashUnlessTooFar = [](const id &any) {
        Contents contents;
        const NSUInteger hash = contents.hashOf(any);
        return contents.goesTooFar() ? std::nullopt : std::optional(hash);
    };
    if (const auto hash = hashUnlessTooFar(object))
        return *hash;
    const NSUInteger ofParts = hashOfParts(object, [&](const id &part) {
        const auto hash = hashUnlessTooFar(part);
        return hash ? *hash : part->hash();
    });
    return ofParts ? ofParts : object->hash();
}

void setVisitParts(VisitParts function) noexcept {
    visitParts = function;
}
