// What the readers of property lists make, mutable or not.
#pragma once

#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Collections/ObjectTable.h"
#include "Platform/Foundation/Serialization/PropertyList/NSPropertyListSerialization.h"

struct PropertyListObjects {
    NSPropertyListMutabilityOptions options;
    /// Whether references (PropertyListUID) are read; lists of texts and numbers have none.
    bool references = false;

    bool mutableContainers() const { return options != NSPropertyListMutabilityOptions::Immutable; }

    /// The text or data, which is immutable, or a mutable copy. Returns none if the argument is none.
    id leaf(const id &made) const {
        return made && options == NSPropertyListMutabilityOptions::MutableContainersAndLeaves
                   ? made->mutableCopy()
                   : made;
    }
    id array(std::vector<id> elements) const {
        return mutableContainers() ? id(NSMutableArray::arrayWithObjects(std::move(elements)))
                                   : NSArray::arrayWithObjects(std::move(elements));
    }
    id dictionary(ObjectTable entries) const {
        return mutableContainers() ? id(NSMutableDictionary::dictionaryWithTable(std::move(entries)))
                                   : NSDictionary::dictionaryWithTable(std::move(entries));
    }
};
