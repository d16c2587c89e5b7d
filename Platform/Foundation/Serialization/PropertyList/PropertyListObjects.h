// Makes the objects of property lists for their readers, mutable or not as requested.
#pragma once

#include "Platform/Foundation/Collections/NSArray.h"
#include "Platform/Foundation/Collections/NSDictionary.h"
#include "Platform/Foundation/Collections/ObjectTable.h"
#include "Platform/Foundation/Serialization/PropertyList/NSPropertyListSerialization.h"

struct PropertyListObjects {
    NSPropertyListMutabilityOptions options;
    /// Whether references (PropertyListUID) are accepted; only archives have them.
    bool references = false;

    bool mutableContainers() const { return options != NSPropertyListMutabilityOptions::Immutable; }

    /// The given immutable text or data, or a mutable copy. None for none.
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
