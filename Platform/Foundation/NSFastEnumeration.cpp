#include "Platform/Foundation/NSFastEnumeration.h"

#include "Platform/Runtime/NSException.h"

void NSMutationWatch::raise() {
    throw NSException(NSGenericException, "a collection was changed while it was enumerated");
}
