// Why JSON was not mapped, or not all of it: what the `…WithJSON` operations tell those who ask.
//
//     Ref<NSError> error;
//     const auto jobs = qn::modelArrayWithClass<Job>(json, &error);
//     error->localizedDescription();   // Job.pages cannot be "many", which is no number: [1].pages, line 3,
//     …
//
// The mapping leaves out what does not fit and goes on, so there may be models and an error. There is none
// when every value that a property or a model was to be made of has been. Of several faults the first one is
// told, in the order of the properties.
//
// Threads: any.
#pragma once

#include "Platform/Foundation/System/NSError.h"

#pragma GCC visibility push(default)

namespace qn {

Ref<NSString> modelErrorDomain();

/// The code of an error.
enum class ModelError : NSInteger {
    notJSON = 1,         ///< a text or bytes that are not valid JSON, or none of those and no collection
    otherRoot = 2,       ///< an array where an object was asked for, or the other way round
    unsuitableValue = 3, ///< a value that does not fit its property, or is no object to make a model of
    refused = 4,         ///< by a hook, or there is no way to make or to fill an instance of the class
};

// Keys of `userInfo`. What does not apply is not there: only texts and bytes have lines, for example.
Ref<NSString> modelErrorPropertyKey(); ///< NSString: "Job.pages"
Ref<NSString> modelErrorKeyPathKey();  ///< NSString: where the value is in the JSON, "staff[2].name"
Ref<NSString> modelErrorValueKey();    ///< the value itself
Ref<NSString> modelErrorLineKey();     ///< NSNumber, from 1
Ref<NSString> modelErrorColumnKey();   ///< NSNumber, from 1, in characters (Unicode code points)
Ref<NSString> modelErrorOffsetKey();   ///< NSNumber, from 0, in bytes of UTF-8

} // namespace qn

#pragma GCC visibility pop
