#include "Manager/PrintService.h"

#include "Platform/Dispatch/Time/Clock.h"
#include "Platform/Dispatch/Time/DetachedThread.h"

#include <array>
#include <condition_variable>
#include <cups/cups.h>
#include <mutex>
#include <optional>
#include <sys/socket.h>

namespace {

constexpr int usualPort = 631;
constexpr std::size_t longestSignOfLife = 65536; // bytes

/// With the port if it is not the usual one; a socket has none.
std::string shownServer() {
    const std::string server = cupsServer();
    const bool isUsual = server.starts_with('/') || ippPort() == usualPort;
    return isUsual ? server : server + ":" + std::to_string(ippPort());
}

/// One look at the print service, shared by who asks and who waits for the answer.
class Inquiry {
public:
    /// Asks, and notes the answer.
    void ask() {
        cupsSetPasswordCB2(noPassword, nullptr);
        PrintServiceAnswer answer{.server = shownServer()};
        if (giveSignOfLife(answer))
            readQueues(answer);
        const std::scoped_lock guard(mutex_);
        answer_ = std::move(answer);
        changed_.notify_all();
    }

    /// The answer, once there is one or the patience is over.
    PrintServiceAnswer await() {
        std::unique_lock lock(mutex_);
        while (!answer_ && clock_.waitUntil(lock, changed_, deadline_)) {
        }
        if (answer_)
            return *answer_;
        givenUp_ = true;
        if (http_t *const connection = connection_)
            shutdown(httpGetFd(connection), SHUT_RDWR); // ends what the other thread waits for
        return {.server = shownServer()};
    }

private:
    using Connection = std::unique_ptr<http_t, void (*)(http_t *)>;

    /// Nobody is there to type one.
    static const char *noPassword(const char *, http_t *, const char *, const char *, void *) {
        return nullptr;
    }

    bool giveSignOfLife(PrintServiceAnswer &answer) {
        const Connection connection(httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC,
                                                 cupsEncryption(), 1,
                                                 static_cast<int>(printServicePatience.count()), nullptr),
                                    httpClose);
        if (!connection || !expose(connection.get()))
            return false;
        const bool briefly = answersBriefly(connection.get());
        const bool lives = expose(nullptr) && briefly; // a connection shut down here ends like an answer
        const char *const name = httpGetField(connection.get(), HTTP_FIELD_SERVER);
        answer.version = lives && name ? name : "";
        return lives;
    }

    /// Any answer will do that comes to an end; what it says is not looked at.
    static bool answersBriefly(http_t *connection) {
        if (!asks(connection))
            return false;
        http_status_t status = HTTP_STATUS_CONTINUE;
        while (status == HTTP_STATUS_CONTINUE)
            status = httpUpdate(connection);
        std::size_t total = 0;
        std::array<char, 4096> part;
        for (ssize_t size; status > HTTP_STATUS_CONTINUE && total <= longestSignOfLife;
             total += std::size_t(size))
            if (size = httpRead2(connection, part.data(), part.size()); size <= 0)
                return size == 0;
        return false;
    }

    /// Sends a small question over this connection alone: the library's own way to send one connects anew
    /// where the sending fails, and who gave up could not end that connection.
    static bool asks(http_t *connection) {
        const std::unique_ptr<ipp_t, void (*)(ipp_t *)> question(ippNewRequest(IPP_OP_CUPS_GET_DEFAULT),
                                                                 ippDelete);
        httpClearFields(connection);
        httpSetLength(connection, ippLength(question.get()));
        httpSetField(connection, HTTP_FIELD_CONTENT_TYPE, "application/ipp");
        return httpPost(connection, "/") == 0 && ippWrite(connection, question.get()) == IPP_STATE_DATA &&
               httpFlushWrite(connection) >= 0;
    }

    /// Says on which connection this thread waits; false when nobody waits for it any more.
    bool expose(http_t *connection) {
        const std::scoped_lock guard(mutex_);
        connection_ = connection;
        return !givenUp_;
    }

    static void readQueues(PrintServiceAnswer &answer) {
        cups_dest_t *list = nullptr;
        const int count = cupsGetDests2(CUPS_HTTP_DEFAULT, &list);
        answer.count = count;
        if (list)
            answer.queues = {list, [count](cups_dest_t *queues) { cupsFreeDests(count, queues); }};
        // An empty list is also how the library says that nobody answered.
        const ipp_status_t status = cupsLastError();
        answer.answers =
            count > 0 || status <= IPP_STATUS_OK_EVENTS_COMPLETE || status == IPP_STATUS_ERROR_NOT_FOUND;
    }

    dispatch::Clock &clock_ = dispatch::Clock::current();
    const dispatch::Instant deadline_ = clock_.now() + printServicePatience;
    std::mutex mutex_; // guards what follows
    std::condition_variable changed_;
    std::optional<PrintServiceAnswer> answer_;
    http_t *connection_ = nullptr; // which the other thread waits on, and will not close now
    bool givenUp_ = false;
};

} // namespace

PrintServiceAnswer askPrintService() {
    const auto inquiry = std::make_shared<Inquiry>();
    if (!dispatch::startDetachedThread([inquiry] { inquiry->ask(); }))
        return {.server = shownServer()};
    return inquiry->await();
}
