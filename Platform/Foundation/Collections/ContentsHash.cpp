#include "Platform/Foundation/Collections/ContentsHash.h"

#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Collections/NSSet.h"
#include "Platform/Foundation/Data/KeyedHash.h"

#include <vector>

namespace {

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

    static NSUInteger hashOfWords(const std::vector<NSUInteger> &words) {
        return keyedHash(words.data(), words.size() * sizeof words[0]);
    }

    NSUInteger hashOfAny(const id &object) {
        if (const auto *array = peek<NSArray>(object)) {
            std::vector<NSUInteger> words;
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
        return object->hash();
    }

    NSUInteger objects_ = 0, depth_ = 0;
    bool tooFar_ = false;
};

} // namespace

NSUInteger contentsHash(const id &object) {
    Contents contents;
    const NSUInteger hash = contents.hashOf(object);
    return contents.goesTooFar() ? object->hash() : hash;
}
