#include "Platform/Foundation/System/TerminationSignals.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

TEST(TerminationSignals, endTheProgramsThatAreStartedAsUsual) {
    dispatch::endOnSignals();
    const pid_t child = fork();
    if (child == 0) {
        sigset_t blocked;
        pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
        _exit(sigismember(&blocked, SIGTERM) + sigismember(&blocked, SIGINT) + sigismember(&blocked, SIGHUP));
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0) << "as many of them are blocked";
}
