#include "Platform/Foundation/System/TerminationSignals.h"

#include "Platform/Dispatch/Time/DetachedThread.h"

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <pthread.h>
#include <unistd.h>
#include <utility>

namespace dispatch {

namespace {

constexpr int endings[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT};

bool isIgnored(int signal) {
    struct sigaction action {};
    return sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

void awaitEnd(const sigset_t &signals, const std::function<void()> &before) {
    int signal = 0;
    sigwait(&signals, &signal);
    pthread_sigmask(SIG_UNBLOCK, &signals, nullptr); // so that a second one ends the process at once
    if (before)
        before();
    endProcess(128 + signal);
}

} // namespace

void endOnSignals(std::function<void()> before) {
    std::signal(SIGPIPE, SIG_IGN);
    static sigset_t signals; // static: the atfork handler uses it as long as the process runs
    sigemptyset(&signals);
    for (const int signal : endings)
        if (!isIgnored(signal))
            sigaddset(&signals, signal);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    pthread_atfork(nullptr, nullptr, [] { pthread_sigmask(SIG_UNBLOCK, &signals, nullptr); });
    if (!startDetachedThread([before = std::move(before)] { awaitEnd(signals, before); }))
        pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
}

void endProcess(int status) {
    static std::atomic_flag ending;
    if (!ending.test_and_set())
        std::quick_exit(status);
    while (true)
        pause();
}

} // namespace dispatch
