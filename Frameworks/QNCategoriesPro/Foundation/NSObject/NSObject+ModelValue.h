// Models as values: copying, coding, hashing and comparing them by their properties.
//
//     id Book::copy() const { return qn::modelCopy(self()); }
//     NSUInteger Book::hash() const { return qn::modelHash(self()); }
//     bool Book::isEqual(const id &other) const { return qn::modelIsEqual(self(), other); }
//     void Book::encodeWithCoder(const Ref<NSCoder> &coder) { qn::modelEncodeWithCoder(self(), coder); }
//     id Book::initWithCoder(const Ref<NSCoder> &coder) { return qn::modelInitWithCoder(self(), coder); }
//
// A class has to forward to them, as above. For objects of Foundation's classes they call the object's own
// operations. The mapped properties take part:
//
// | type                    | copied        | hash, equality | coded                                        |
// |-------------------------|---------------|----------------|----------------------------------------------|
// | number                  | yes           | yes            | as NSNumber; left out when it is not finite  |
// | long double             | yes           |                | the same, as a double                        |
// | object                  | the reference | yes            | if it can be coded; of NSValues only numbers |
// | class, block            | the reference | yes            |                                              |
// | selector                | the reference |                | by name                                      |
// | pointer, C string       | the reference |                |                                              |
// | structure               | yes           | yes            | points, sizes and the like, as NSValue       |
// | union                   | yes           | yes            |                                              |
// | C array                 |               |                |                                              |
//
// Threads: any, while no thread changes the objects.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

#pragma GCC visibility push(default)

class NSCoder;

namespace qn {

/// A new object of the same class with the same values. None for a class that cannot be instantiated.
id modelCopy(const id &model);

/// Encodes each value under the name of its property. Does nothing without a coder.
void modelEncodeWithCoder(const id &model, const Ref<NSCoder> &coder);
/// Sets the properties to what the coder has, and returns the model itself. A number property is set only
/// where the coder has a number; an object property becomes none where the coder has no object for it.
id modelInitWithCoder(const id &model, const Ref<NSCoder> &coder);

/// The hashes of all values combined (XOR); the address for a class without compared properties. Models that
/// refer back to one another add nothing to each other's hash, nor does anything more than 512 levels deep.
/// Each model within is visited once, in however many ways it can be reached.
NSUInteger modelHash(const id &model);
/// Whether both are of exactly the same class, return the same `hash`, and have equal values. So objects of a
/// class that does not override `hash` are never equal. Models more than 512 levels deep are equal only if
/// they are the same object. Two models that are already being compared count as equal when they are met
/// again.
bool modelIsEqual(const id &model, const id &other);

} // namespace qn

#pragma GCC visibility pop
