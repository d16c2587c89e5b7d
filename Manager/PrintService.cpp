#include "Manager/PrintService.h"

#include "Platform/Dispatch/Time/Clock.h"
#include "Platform/Dispatch/Time/DetachedThread.h"
#include "Platform/Locking/Condition.h"

#include <array>
#include <cups/cups.h>
#include <optional>
#include <sys/socket.h>

namespace {

constexpr int usualPort = 631;
constexpr std::size_t longestSignOfLife = 65536; // bytes

/// The server, with the port unless it is the usual one or the server is a socket.
std::string shownServer() {
    const std::string server = cupsServer();
    const bool isUsual = server.starts_with('/') || ippPort() == usualPort;
    return isUsual ? server : server + ":" + std::to_string(ippPort());
}

/// One query of the print service, shared by the thread that asks and the one that waits for the answer.
class Inquiry {
public:
    /// Asks, and notes the answer.
    void ask() {
        cupsSetPasswordCB2(noPassword, nullptr);
        PrintServiceAnswer answer{.server = shownServer()};
        if (giveSignOfLife(answer))
            readQueues(answer);
        const locking::MutexLock guard(mutex_);
        answer_ = std::move(answer);
        changed_.notifyAll();
    }

    /// The answer, or one with `answers` false when the time is over.
    PrintServiceAnswer await() {
        const locking::MutexLock lock(mutex_);
        while (!answer_ && clock_.waitUntil(mutex_, changed_, deadline_)) {
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

    /// No user is there to type one.
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
        const bool lives = expose(nullptr) && briefly; // one that `await` shut down ends like an answer
        const char *const name = httpGetField(connection.get(), HTTP_FIELD_SERVER);
        answer.version = lives && name ? name : "";
        return lives;
    }

    /// Whether there is any answer that ends within `longestSignOfLife`; its contents do not matter.
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

    /// Sends a small request over this connection only. libcups' own way to send one connects again when
    /// sending fails, and the waiting thread could not end that connection.
    static bool asks(http_t *connection) {
        const std::unique_ptr<ipp_t, void (*)(ipp_t *)> question(ippNewRequest(IPP_OP_CUPS_GET_DEFAULT),
                                                                 ippDelete);
        httpClearFields(connection);
        httpSetLength(connection, ippLength(question.get()));
        httpSetField(connection, HTTP_FIELD_CONTENT_TYPE, "application/ipp");
        return httpPost(connection, "/") == 0 && ippWrite(connection, question.get()) == IPP_STATE_DATA &&
               httpFlushWrite(connection) >= 0;
    }

    /// Publishes the connection on which this thread waits; false when the other thread has given up.
    bool expose(http_t *connection) {
        const locking::MutexLock guard(mutex_);
        connection_ = connection;
        return !givenUp_;
    }

    static void readQueues(PrintServiceAnswer &answer) {
        cups_dest_t *list = nullptr;
        const int count = cupsGetDests2(CUPS_HTTP_DEFAULT, &list);
        answer.count = count;
        if (list)
            answer.queues = {list, [count](cups_dest_t *queues) { cupsFreeDests(count, queues); }};
        // An empty list may also mean that there was no answer.
        const ipp_status_t status = cupsLastError();
        answer.answers =
            count > 0 || status <= IPP_STATUS_OK_EVENTS_COMPLETE || status == IPP_STATUS_ERROR_NOT_FOUND;
    }

    dispatch::Clock &clock_ = dispatch::Clock::current();
    const dispatch::Instant deadline_ = clock_.now() + printServicePatience;
    locking::Mutex mutex_;
    locking::Condition changed_;
    std::optional<PrintServiceAnswer> answer_ ZK_GUARDED_BY(mutex_);
    /// On which the asking thread waits; not closed while set.
    http_t *connection_ ZK_GUARDED_BY(mutex_) = nullptr;
    bool givenUp_ ZK_GUARDED_BY(mutex_) = false;
};

} // namespace

PrintServiceAnswer askPrintService() {
    const auto inquiry = std::make_shared<Inquiry>();
    if (!dispatch::startDetachedThread([inquiry] { inquiry->ask(); }))
        return {.server = shownServer()};
    return inquiry->await();
}
