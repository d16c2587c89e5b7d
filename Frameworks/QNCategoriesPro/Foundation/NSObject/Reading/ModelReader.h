// Makes models straight out of a JSON text. The long way builds dictionaries of all the text holds and fills
// models with those; this way gives the same models in half the time, and needs no memory for dictionaries.
//
// It is open to plain classes (`_QNModelMeta::_isPlain`) when neither they nor the classes of what they hold
// run code of their own while they are filled, so that nobody can tell the difference. Values that become no
// plain model or array of those become objects, and are set by the long way. It gives up only on a key that
// is there twice: the models begun by then are let go.
//
// Threads: any.
#pragma once

#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Data/NSData.h"

#include <optional>

namespace qn {

/// The model of a dictionary, as by `modelWithDictionary`; none for any other text. Nothing where the caller
/// has to go the long way.
std::optional<id> readModel(Class cls, const Ref<NSData> &json);
/// The models of an array, as by `modelArrayWithClass`, in the same way.
std::optional<Ref<NSArray>> readModelArray(Class cls, const Ref<NSData> &json);

} // namespace qn
