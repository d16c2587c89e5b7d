// Models as values, by their properties: for a class's own copy, coding, hash and equality.
//
//     id Book::copy() const { return qn::modelCopy(self()); }
//     NSUInteger Book::hash() const { return qn::modelHash(self()); }
//     bool Book::isEqual(const id &other) const { return qn::modelIsEqual(self(), other); }
//     void Book::encodeWithCoder(const Ref<NSCoder> &coder) { qn::modelEncodeWithCoder(self(), coder); }
//     id Book::initWithCoder(const Ref<NSCoder> &coder) { return qn::modelInitWithCoder(self(), coder); }
//
// Nothing calls them by itself. An object of a class of Foundation uses its own operations. Those properties
// take part that are mapped.
//
// | type                    | copied        | hash, equality | coded                                        |
// |-------------------------|---------------|----------------|----------------------------------------------|
// | number                  | yes           | yes            | as NSNumber; left out when it is not finite  |
// | long double             | yes           |                | the same, as a double                        |
// | object                  | the reference | yes            | what can be coded; no NSValue but numbers    |
// | class, block            | the reference | yes            |                                              |
// | selector                | the reference |                | by name                                      |
// | pointer, C string       | the reference |                |                                              |
// | structure               | yes           | yes            | points, sizes and the like, as NSValue       |
// | union                   | yes           | yes            |                                              |
// | C array                 |               |                |                                              |
//
// Threads: any, while nobody changes the objects.
#pragma once

#include "Platform/Runtime/Object/NSObject.h"

class NSCoder;

namespace qn {

/// A new object of the same class with the same values. None for a class that cannot be instantiated.
id modelCopy(const id &model);

/// Under the names of the properties. Does nothing without a coder.
void modelEncodeWithCoder(const id &model, const Ref<NSCoder> &coder);
/// The model itself, its properties set to what the coder has: numbers only by numbers, objects to none when
/// the coder has none that fits.
id modelInitWithCoder(const id &model, const Ref<NSCoder> &coder);

/// Of all values; the address without values. Models that lead back to one another add nothing to each
/// other's hash, nor does what lies more than 512 levels deep. Each model within is visited once, however
/// many ways lead to it.
NSUInteger modelHash(const id &model);
/// Whether both are of exactly the same class, say that they have the same `hash`, and have equal values. So
/// a class that has no hash of its own has no equal objects. Models more than 512 levels deep are not equal
/// unless they are the same; a comparison within the same comparison adds nothing to it.
bool modelIsEqual(const id &model, const id &other);

} // namespace qn
