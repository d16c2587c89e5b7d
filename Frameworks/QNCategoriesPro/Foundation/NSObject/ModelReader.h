// Makes models straight out of a JSON text. The long way builds dictionaries of all the text holds and fills
// models with those; this way gives the same models in half the time, and needs no memory for dictionaries.
//
// It is open to classes whose filling runs no code of their own (`_QNModelMeta::_isPlain`), so that nobody
// can tell the difference. It gives up where that is in question: a model within that is not plain or is
// there already, or a key twice. The models begun by then are let go, and the caller goes the long way.
//
// Threads: any.
#pragma once

#include "Platform/Foundation/NSArray.h"
#include "Platform/Foundation/NSData.h"

namespace qn {

/// The model of a dictionary, as by `modelWithDictionary`. None for anything else, and when it gave up.
id readModel(Class cls, const Ref<NSData> &json);
/// The models of an array, as by `modelArrayWithClass`. None for anything else, and when it gave up.
Ref<NSArray> readModelArray(Class cls, const Ref<NSData> &json);

} // namespace qn
