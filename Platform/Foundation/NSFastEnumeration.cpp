#include "Platform/Foundation/NSFastEnumeration.h"

#include "Platform/Runtime/NSException.h"

void NSFastEnumerationState::watch(const NSMutationCount &count) {
    if (mutations) {
        check();
        return;
    }
    mutations = &count;
    mutationsAtStart = count.value();
}

void NSFastEnumerationState::check() const {
    if (mutations && mutations->value() != mutationsAtStart)
        throw NSException(NSGenericException, "a collection was changed while it was enumerated");
}
