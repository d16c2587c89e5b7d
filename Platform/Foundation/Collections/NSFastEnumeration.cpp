#include "Platform/Foundation/Collections/NSFastEnumeration.h"

#include "Platform/Runtime/Object/NSException.h"

void NSMutationWatch::raise() {
    throw NSException(NSGenericException, "a collection was changed while it was enumerated");
}
