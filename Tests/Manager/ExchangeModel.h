// A plain model of one exchange: from a script of the transport to what must be seen from outside.
#pragma once

#include "Tests/Manager/ManagerTesting.h"
#include "Tests/Manager/ScriptedTransport.h"

#include <ostream>

/// What an exchange did.
struct Exchange {
    Lines calls;       ///< of the transport, as ScriptedTransport writes them down
    Lines completions; ///< "header data status": bytes as `hex` gives them, the transport's status
    Lines log;

    friend bool operator==(const Exchange &, const Exchange &) = default;
};

std::ostream &operator<<(std::ostream &stream, const Exchange &exchange);
std::ostream &operator<<(std::ostream &stream, const ScriptedTransport::Read &read);

/// The exchange on the transport's first handle, for the sample record.
Exchange predictExchange(const ScriptedTransport &script, const Bytes &request, std::int32_t timeout);
