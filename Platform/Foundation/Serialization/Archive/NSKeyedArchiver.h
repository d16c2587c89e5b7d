// Keyed archives: objects to bytes and back, with everything they refer to.
//
//     auto archive = NSKeyedArchiver::archivedDataWithRootObject(book, &error);
//     auto again = as<Book>(NSKeyedUnarchiver::unarchivedObjectOfClasses(
//         {Book::class_(), NSString::class_()}, archive, &error));
//
// An archive is a binary property list
//
//     { $archiver = NSKeyedArchiver; $version = 100000; $top = { root = <reference>; };
//       $objects = ( "$null", <each object once> ); }
//
// Immutable texts and data, and numbers, are in `$objects` themselves. Every other object is a dictionary of
// its values by key, with references to other objects, and a reference `$class` to a dictionary of
// `$classname` and `$classes`, the names from the class up to the root.
//
// Archived can be objects that implement `encodeWithCoder:` and `initWithCoder:` (NSCoder.h), and of the
// platform's own classes texts, numbers and decimal numbers, values that are structures of numbers, data,
// dates, URLs, attributed strings, arrays, dictionaries, sets and NSNull. Other kinds of collections are
// written as the platform's. A float is read as a double, an integer perhaps as another integer type.
//
// Objects referred to several times are written once and are shared again after reading. Any cycle can be
// written, but only one through an object of a program's own class can be read: `initWithCoder:` may then
// receive an object whose own `initWithCoder:` is still running, which must return its receiver in the end.
//
// Limits: objects nest at most 512 levels, and texts must not have lone surrogates. When reading, comparing
// the elements of sets and the keys of dictionaries must not take out of proportion, so these must not refer
// to an object that is still being read.
//
// Safe from any thread; one object graph belongs to one thread at a time.
#pragma once

#include "Platform/Foundation/Serialization/Archive/NSCoder.h"

#include <memory>
#include <vector>

#pragma GCC visibility push(default)

class NSKeyedArchiver : public NSCoder {
    NS_CLASS(NSKeyedArchiver, NSCoder)
public:
    static constexpr unsigned deepestNesting = 512;

    /// The archive. None for none and for an object that cannot be written, with `*error` set unless `error`
    /// is null: NSCocoaErrorDomain, 4866; the debug description says why.
    static Ref<NSData> archivedDataWithRootObject(const id &object, Ref<NSError> *error = nullptr);

    /// For `archivedDataWithRootObject`.
    NSKeyedArchiver();
    ~NSKeyedArchiver() override;

    void encodeObject(const id &object, const Ref<NSString> &key) override;
    void encodePropertyList(const id &leaf, const Ref<NSString> &key) override;
    void failWithError(const Ref<NSError> &error) override;
    /// Writes a list of references; used by the collections.
    void encodeArrayOfObjects(const std::vector<id> &objects, const Ref<NSString> &key);

private:
    struct State;

    id reference(const id &object);
    void encode(const id &object, std::uint64_t index);
    id classReference(Class cls);
    void store(const id &value, const Ref<NSString> &key);
    Ref<NSData> finish(const id &root);
    void fail(const Ref<NSString> &reason);

    const std::unique_ptr<State> state_;
};

#pragma GCC visibility pop
