// Reads the archives of NSKeyedArchiver, whose header describes both.
//
// Archives from outside are safe to read: only objects of classes that the caller allows are made, and
// neither the stack nor the time can be exhausted. Other bytes, and archives beyond a limit, are refused.
#pragma once

#include "Platform/Foundation/Serialization/Archive/NSCoder.h"

#include <memory>
#include <optional>
#include <vector>

#pragma GCC visibility push(default)

class NSKeyedUnarchiver : public NSCoder {
    NS_CLASS(NSKeyedUnarchiver, NSCoder)
public:
    /// The object in the archive. Every object in it, including texts, numbers and collections, must be of
    /// one of the classes or of a subclass. All classes that are linked into the program or were made at run
    /// time are found by name.
    ///
    /// None for an archive that is refused, with `*error` set unless `error` is null: NSCocoaErrorDomain,
    /// 4864; the debug description says why. None without an error for an archive of none.
    static id unarchivedObjectOfClasses(const std::vector<Class> &classes, const Ref<NSData> &archive,
                                        Ref<NSError> *error = nullptr);
    static id unarchivedObjectOfClass(Class cls, const Ref<NSData> &archive, Ref<NSError> *error = nullptr) {
        return unarchivedObjectOfClasses({cls}, archive, error);
    }
    /// The same with the class, or all of them, as types; the object is to be of the first.
    template <class T, class... Others>
    static Ref<T> unarchivedObjectOf(const Ref<NSData> &archive, Ref<NSError> *error = nullptr) {
        return as<T>(unarchivedObjectOfClasses({T::class_(), Others::class_()...}, archive, error));
    }

    /// For `unarchivedObjectOfClasses`.
    explicit NSKeyedUnarchiver(std::vector<Class> allowed);
    ~NSKeyedUnarchiver() override;

    id decodeObjectForKey(const Ref<NSString> &key) override;
    id decodePropertyListForKey(const Ref<NSString> &key) override;
    bool containsValueForKey(const Ref<NSString> &key) override;
    void failWithError(const Ref<NSError> &error) override;

    /// Reads what `encodeArrayOfObjects` wrote; nothing when there is no such list or reading has failed.
    std::optional<std::vector<id>> decodeArrayOfObjectsForKey(const Ref<NSString> &key);
    /// The same for objects that are about to be compared with each other; refuses the archive when that
    /// would take too long.
    std::optional<std::vector<id>> decodeDistinctObjectsForKey(const Ref<NSString> &key);

private:
    struct State;

    id decodeRoot(const Ref<NSData> &archive);
    id decodeReference(const id &reference);
    void decode(std::uint64_t index);
    id decodeContents(Class cls, std::uint64_t index);
    Class classOf(const id &reference);
    id encodedValue(const Ref<NSString> &key) const;
    bool isAllowed(Class cls);
    id fail(const Ref<NSString> &reason);

    const std::unique_ptr<State> state_;
};

#pragma GCC visibility pop
