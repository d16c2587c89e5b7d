// Locks that the compiler checks: what a mutex guards says so, and clang (Tools/lint locks) refuses every
// access without it.
//
//     locking::Mutex mutex_;
//     locking::Condition changed_;
//     bool ready_ ZK_GUARDED_BY(mutex_) = false;
//     void tidyUp() ZK_REQUIRES(mutex_);       // for callers that hold it
//
//     const locking::MutexLock lock(mutex_);
//     while (!ready_)
//         changed_.wait(mutex_);
//
// They are the standard library's, and as fast. Clang looks into neither constructors nor destructors, nor
// after a guarded member that was handed out by pointer. To it a lambda is a function of its own, which holds
// nothing: that is why conditions are waited for in loops.
#pragma once

#include <mutex>

#pragma GCC visibility push(default)

#ifdef __clang__
#define ZK_THREAD_ANNOTATION(...) __attribute__((__VA_ARGS__))
#else
#define ZK_THREAD_ANNOTATION(...)
#endif

// For members: the mutex of the member itself, and of what it points to.
#define ZK_GUARDED_BY(mutex) ZK_THREAD_ANNOTATION(guarded_by(mutex))
#define ZK_PT_GUARDED_BY(mutex) ZK_THREAD_ANNOTATION(pt_guarded_by(mutex))
/// For a mutex: it is taken before these where one thread holds both.
#define ZK_ACQUIRED_BEFORE(...) ZK_THREAD_ANNOTATION(acquired_before(__VA_ARGS__))

// For functions: what their callers must hold, and what they must not.
#define ZK_REQUIRES(...) ZK_THREAD_ANNOTATION(requires_capability(__VA_ARGS__))
#define ZK_EXCLUDES(...) ZK_THREAD_ANNOTATION(locks_excluded(__VA_ARGS__))

// For the types of mutexes and locks.
#define ZK_CAPABILITY(name) ZK_THREAD_ANNOTATION(capability(name))
#define ZK_SCOPED_CAPABILITY ZK_THREAD_ANNOTATION(scoped_lockable)
#define ZK_ACQUIRE(...) ZK_THREAD_ANNOTATION(acquire_capability(__VA_ARGS__))
#define ZK_ACQUIRE_SHARED(...) ZK_THREAD_ANNOTATION(acquire_shared_capability(__VA_ARGS__))
#define ZK_RELEASE(...) ZK_THREAD_ANNOTATION(release_capability(__VA_ARGS__))
#define ZK_RELEASE_SHARED(...) ZK_THREAD_ANNOTATION(release_shared_capability(__VA_ARGS__))

namespace locking {

class ZK_CAPABILITY("mutex") Mutex {
public:
    void lock() ZK_ACQUIRE() { native_.lock(); }
    void unlock() ZK_RELEASE() { native_.unlock(); }

private:
    friend class Condition;
    std::mutex native_;
};

/// Holds a mutex as long as the scope lives.
template <class Lockable>
class ZK_SCOPED_CAPABILITY MutexLock {
public:
    explicit MutexLock(Lockable &mutex) ZK_ACQUIRE(mutex) : mutex_(mutex) { mutex_.lock(); }
    MutexLock(const MutexLock &) = delete;
    MutexLock &operator=(const MutexLock &) = delete;
    ~MutexLock() ZK_RELEASE() { mutex_.unlock(); }

private:
    Lockable &mutex_;
};

/// Releases a mutex that is held, as long as the scope lives.
template <class Lockable>
class ZK_SCOPED_CAPABILITY MutexUnlock {
public:
    explicit MutexUnlock(Lockable &mutex) ZK_RELEASE(mutex) : mutex_(mutex) { mutex_.unlock(); }
    MutexUnlock(const MutexUnlock &) = delete;
    MutexUnlock &operator=(const MutexUnlock &) = delete;
    ~MutexUnlock() ZK_RELEASE() { mutex_.lock(); }

private:
    Lockable &mutex_;
};

} // namespace locking

#pragma GCC visibility pop
