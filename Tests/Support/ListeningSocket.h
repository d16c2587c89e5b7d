// A socket where a print service would listen, for as long as it lives.
#pragma once

#include "Tests/Support/Testing.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

class ListeningSocket : NoCopies {
public:
    explicit ListeningSocket(std::string file) : path(std::move(file)) {
        sockaddr_un address = {AF_UNIX, {}};
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        EXPECT_EQ(::bind(number, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
        EXPECT_EQ(::listen(number, 8), 0);
    }
    ~ListeningSocket() {
        ::close(number);
        ::unlink(path.c_str());
    }

    const std::string path;
    const int number = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
};
