#include "Tools/zkprinter/Printing/Output.h"

#include "Platform/Locking/Mutex.h"
#include "Tools/zkprinter/Failures/Failure.h"

#include <cerrno>
#include <cstring>
#include <optional>
#include <poll.h>
#include <string>
#include <thread>
#include <unistd.h>

namespace {

struct Output {
    locking::Mutex lock;
    std::string text ZK_GUARDED_BY(lock);
    std::optional<std::thread::id> owner ZK_GUARDED_BY(lock);

    bool isClosedToThisThread() const ZK_REQUIRES(lock) {
        return owner && *owner != std::this_thread::get_id();
    }
};

Output &output() {
    static auto &all = *new Output; // for threads that outlive main
    return all;
}

/// Whether to try writing again: the caller may have made standard output non-blocking.
bool canBeWaitedFor(int error) {
    pollfd out{.fd = STDOUT_FILENO, .events = POLLOUT, .revents = 0};
    return error == EINTR || (error == EAGAIN && poll(&out, 1, -1) >= 0);
}

/// Returns the error number, or 0.
int writeAll(std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = write(STDOUT_FILENO, text.data(), text.size());
        if (count >= 0)
            text.remove_prefix(static_cast<std::size_t>(count));
        else if (!canBeWaitedFor(errno))
            return errno;
    }
    // A file on another computer may report only on closing that it is full.
    const int copy = dup(STDOUT_FILENO);
    return copy >= 0 && close(copy) != 0 && errno != EINTR ? errno : 0;
}

} // namespace

void print(std::string_view text) {
    const locking::MutexLock guard(output().lock);
    if (!output().isClosedToThisThread())
        output().text += text;
}

void deliver() {
    std::string text;
    {
        const locking::MutexLock guard(output().lock);
        if (output().isClosedToThisThread())
            return;
        text.swap(output().text);
    }
    if (text.empty())
        return;
    if (const int error = writeAll(text))
        throw Failure(ExitStatus::unwritable, std::string("Standard output does not take the result (") +
                                                  std::strerror(error) +
                                                  "); make room or give it another place, and try again.");
}

void takeOutputOver() {
    const locking::MutexLock guard(output().lock);
    output().owner = std::this_thread::get_id();
    output().text.clear();
}
