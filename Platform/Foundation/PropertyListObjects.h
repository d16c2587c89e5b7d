// What the readers of property lists make, mutable or not.
#pragma once

#include "Platform/Foundation/NSPropertyListSerialization.h"

struct PropertyListObjects {
    NSPropertyListMutabilityOptions options;
    /// Whether references (PropertyListUID) are read; lists of texts and numbers have none.
    bool references = false;

    /// The text or data, which is immutable, or a mutable copy.
    id leaf(const id &made) const {
        return made && options == NSPropertyListMutabilityOptions::MutableContainersAndLeaves
                   ? made->mutableCopy()
                   : made;
    }
    /// The mutable array or dictionary that was filled, or an immutable copy.
    id container(const id &filled) const {
        return options == NSPropertyListMutabilityOptions::Immutable ? filled->copy() : filled;
    }
};
