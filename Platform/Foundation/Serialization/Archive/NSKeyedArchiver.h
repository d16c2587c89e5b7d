// Objects to bytes and back, with everything they refer to: binary keyed archives.
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
// Texts, data and numbers stand in `$objects` as they are; every other object is a dictionary of its values
// by key, with references to other objects, and its `$class`: a dictionary of `$classname` and, from the
// class up to the root, `$classes`.
//
// What takes part: objects that answer `encodeWithCoder:` and `initWithCoder:` (see NSCoder), and of the
// platform's own classes texts, numbers and decimal numbers, values of structures of numbers, data, dates,
// URLs, attributed strings, arrays, dictionaries, sets and the null marker. A collection of another kind is
// written as the platform's. A float comes back as a double, the other numbers as wide as they need.
//
// Objects met twice are written once and come back shared. Cycles are written. They are read only where they
// lead through an object of a program's own class: `initWithCoder:` may be given an object whose own
// `initWithCoder:` is still running, as long as that returns its receiver in the end.
//
// Limits, both ways: objects nest 512 levels. Texts with a surrogate that stands alone cannot be written.
// Read, moreover: comparing the elements of sets and the keys of dictionaries with each other must not cost
// out of all proportion, so they must not lead back to an object that is still being read.
//
// Threads: any, one at a time for one object graph.
#pragma once

#include "Platform/Foundation/Serialization/Archive/NSCoder.h"

#include <memory>
#include <vector>

class NSKeyedArchiver : public NSCoder {
    NS_CLASS(NSKeyedArchiver, NSCoder)
public:
    static constexpr unsigned deepestNesting = 512;

    /// None with `*error` (NSCocoaErrorDomain, 4866, the debug description says why) set when `error` is
    /// given, for an object that cannot be written and for none.
    static Ref<NSData> archivedDataWithRootObject(const id &object, Ref<NSError> *error = nullptr);

    /// For `archivedDataWithRootObject`.
    NSKeyedArchiver();
    ~NSKeyedArchiver() override;

    void encodeObject(const id &object, const Ref<NSString> &key) override;
    void encodePropertyList(const id &leaf, const Ref<NSString> &key) override;
    void failWithError(const Ref<NSError> &error) override;
    /// A list of references, as the collections write their contents.
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
