// Where the conversion of a value for an object property puts its result.
#pragma once

#include "Frameworks/QNCategoriesPro/Foundation/NSObject/Metadata/_QNModelPropertyMeta.h"

namespace qn {

struct PropertyStore {
    NSObject &model;
    const _QNModelPropertyMeta &meta;

    /// Calls the setter. Always true: the value has been dealt with.
    bool operator()(const id &object) const {
        meta.set<id>(model, object);
        return true;
    }
};

} // namespace qn
