// A private CUPS server (Tools/private-cups) that lives as long as one object.
#pragma once

#include "Tests/Support/TemporaryFolder.h"

#include <cstdio>

/// Serves this process, through its environment, from a folder of its own; without `queues` an empty one.
class PrivateCups : NoCopies {
public:
    explicit PrivateCups(bool queues) {
        socket_ = run("start " + folder_ + (queues ? "" : " --no-queues"));
        ::setenv("CUPS_SERVER", socket_.c_str(), 1);
        ::setenv("HOME", (folder_ + "/etc").c_str(), 1); // nobody's own printer options
    }
    ~PrivateCups() { stop(); }

    const std::string &socket() const { return socket_; }
    void addQueue(const std::string &arguments) { run("queue " + folder_ + " " + arguments); }
    void stop() {
        if (!std::exchange(stopped_, true))
            run("stop " + folder_);
    }

private:
    /// What the tool prints, without the line end.
    static std::string run(const std::string &arguments) {
        FILE *const output = ::popen((PRIVATE_CUPS " " + arguments).c_str(), "r");
        std::string text;
        for (int byte; output && (byte = std::fgetc(output)) != EOF;)
            text += static_cast<char>(byte);
        EXPECT_EQ(output ? ::pclose(output) : -1, 0) << arguments;
        return text.substr(0, text.find('\n'));
    }

    const TemporaryFolder temporary_;
    const std::string folder_ = temporary_.path();
    std::string socket_;
    bool stopped_ = false;
};
