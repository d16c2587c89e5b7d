// Reads what NSKeyedArchiver writes; the header of that describes both.
//
// Bytes from outside do no harm: they make no object of a class that the caller did not allow, and they
// exhaust neither the stack nor the time. An archive that is not one, or that breaks a limit, is refused.
#pragma once

#include "Platform/Foundation/Serialization/Archive/NSCoder.h"

#include <memory>
#include <optional>
#include <vector>

class NSKeyedUnarchiver : public NSCoder {
    NS_CLASS(NSKeyedUnarchiver, NSCoder)
public:
    /// The object in the archive. Every object in it, texts, numbers and collections included, must be of one
    /// of the classes or of a subclass. Every class that is linked into the program, or was made at run time,
    /// is known by its name.
    ///
    /// None with `*error` (NSCocoaErrorDomain, 4864, the debug description says why) set when `error` is
    /// given, for an archive that is refused; none alone for one that holds none.
    static id unarchivedObjectOfClasses(const std::vector<Class> &classes, const Ref<NSData> &archive,
                                        Ref<NSError> *error = nullptr);
    static id unarchivedObjectOfClass(Class cls, const Ref<NSData> &archive, Ref<NSError> *error = nullptr) {
        return unarchivedObjectOfClasses({cls}, archive, error);
    }

    /// For `unarchivedObjectOfClasses`.
    explicit NSKeyedUnarchiver(std::vector<Class> allowed);
    ~NSKeyedUnarchiver() override;

    id decodeObjectForKey(const Ref<NSString> &key) override;
    id decodePropertyListForKey(const Ref<NSString> &key) override;
    bool containsValueForKey(const Ref<NSString> &key) override;
    void failWithError(const Ref<NSError> &error) override;

    /// What `encodeArrayOfObjects` wrote; nothing when there is no such list or it has failed.
    std::optional<std::vector<id>> decodeArrayOfObjectsForKey(const Ref<NSString> &key);
    /// The same for objects that are about to be compared with each other; fails when that costs too much.
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
