// Reads models straight from a JSON text. The long way turns the whole text into dictionaries and fills
// models from those; this way gives the same models without making dictionaries. A thousand plain models are
// read in 0.49 times the time (Benchmarks/run, text to objects).
//
// It serves plain classes (`_QNModelMeta::_isPlain`) as long as neither they nor the classes of their values
// run code of their own while they are filled, so that no code can observe the difference. Values that do not
// become a plain model, or an array of those, become objects and are set as by the long way. Once begun, it
// gives up only on a key that occurs twice in an object; the models made by then are released.
//
// Threads: any.
#pragma once

#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Data/NSData.h"

#include <optional>

namespace qn {

/// The model of the JSON object in the text, as by `modelWithDictionary`; none for any other text.
/// `std::nullopt` where the caller has to go the long way.
std::optional<id> readModel(Class cls, const Ref<NSData> &json);
/// The models of an array, as by `modelArrayWithClass`, in the same way.
std::optional<Ref<NSArray>> readModelArray(Class cls, const Ref<NSData> &json);

} // namespace qn
