// What is wrong with JSON that was to be mapped, and the error that tells it.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Diagnosis/JSONPath.h"
#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Diagnosis/ModelError.h"

#include <optional>

namespace qn {

struct ModelFault {
    ModelError code;
    std::string reason;     ///< a sentence, or its end when there is a value
    std::string property{}; ///< "Job.pages"; empty when it concerns none
    id value{};             ///< none when it concerns none
    JSONPath path{};
    std::optional<std::size_t> offset{}; ///< when it is not that of the path
};

/// `text` is null for JSON that is no text.
Ref<NSError> errorOf(const ModelFault &fault, const std::string_view *text);

} // namespace qn
