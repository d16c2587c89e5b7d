// Lets the system have no thread left as long as it lives: the stack of any would be larger than all memory.
#pragma once

#include <pthread.h>

#include <cstddef>

namespace dispatch {

class NoThreadLeft {
public:
    NoThreadLeft() {
        pthread_getattr_default_np(&ordinary_);
        pthread_attr_t endless;
        pthread_attr_init(&endless);
        pthread_attr_setstacksize(&endless, std::size_t{1} << 46);
        pthread_setattr_default_np(&endless);
        pthread_attr_destroy(&endless);
    }
    NoThreadLeft(const NoThreadLeft &) = delete;
    NoThreadLeft &operator=(const NoThreadLeft &) = delete;
    ~NoThreadLeft() {
        pthread_setattr_default_np(&ordinary_);
        pthread_attr_destroy(&ordinary_);
    }

private:
    pthread_attr_t ordinary_;
};

} // namespace dispatch
