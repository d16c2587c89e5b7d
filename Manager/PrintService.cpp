#include "Manager/PrintService.h"

#include <cups/cups.h>
#include <memory>

namespace {

constexpr int connectTimeout_ms = 5000;

struct Close {
    void operator()(http_t *connection) const { httpClose(connection); }
};

} // namespace

std::string printServiceVersion() {
    const std::unique_ptr<http_t, Close> connection(httpConnect2(
        cupsServer(), ippPort(), nullptr, AF_UNSPEC, cupsEncryption(), 1, connectTimeout_ms, nullptr));
    if (!connection)
        return {};
    // Any request will do: the name stands in the header of the answer.
    ippDelete(cupsDoRequest(connection.get(), ippNewRequest(IPP_OP_CUPS_GET_DEFAULT), "/"));
    const char *const name = httpGetField(connection.get(), HTTP_FIELD_SERVER);
    return name ? name : "";
}
