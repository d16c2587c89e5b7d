// A plain model of one exchange: from a script of the transport to what must be seen from outside.
#pragma once

#include "Tests/Manager/ManagerTesting.h"
#include "Tests/Manager/ScriptedTransport.h"

/// What an exchange on the transport's first handle does for the sample record, one thing after the other:
/// the calls as ScriptedTransport writes them down, "complete header data status" and "log …".
Lines predictExchange(const ScriptedTransport &script, const Bytes &request, std::int32_t timeout);
