// Lets the system have no thread left as long as it lives: the stack of any would be larger than all memory.
#pragma once

#include "Tests/Support/Testing.h"

#include <pthread.h>

namespace dispatch {

class NoThreadLeft : NoCopies {
public:
    NoThreadLeft() {
        pthread_getattr_default_np(&ordinary_);
        pthread_attr_t endless;
        pthread_attr_init(&endless);
        pthread_attr_setstacksize(&endless, std::size_t{1} << 46);
        pthread_setattr_default_np(&endless);
        pthread_attr_destroy(&endless);
    }
    ~NoThreadLeft() {
        pthread_setattr_default_np(&ordinary_);
        pthread_attr_destroy(&ordinary_);
    }

private:
    pthread_attr_t ordinary_;
};

} // namespace dispatch
