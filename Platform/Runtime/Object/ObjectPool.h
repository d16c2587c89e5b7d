// Makes many small objects, as a parser does, side by side in chunks of memory. A chunk is freed when the
// last object in it has been destroyed.
//
//     ObjectPool pool;
//     Ref<NSNumber> number = pool.make<NSNumber>('q', std::int64_t{5});
//
// The objects are like any others and may outlive the pool. A single object that is kept keeps the whole
// chunk, about 4 KB.
//
// Threads: a pool belongs to one thread at a time; its objects may be destroyed on any.
#pragma once

#include "Platform/Runtime/Object/Ref.h"

#include <atomic>
#include <cstddef>
#include <new>

#pragma GCC visibility push(default)

class ObjectPool {
public:
    ObjectPool() = default;
    ObjectPool(const ObjectPool &) = delete;
    ObjectPool &operator=(const ObjectPool &) = delete;
    ~ObjectPool() {
        if (chunk_)
            chunk_->finish();
    }

    template <class T, class... Arguments>
    Ref<T> make(Arguments &&...arguments) {
        static_assert(sizeof(T) <= largest && alignof(T) <= alignment);
        return std::allocate_shared<T>(Allocator<T>{chunkWithRoom()}, std::forward<Arguments>(arguments)...);
    }

private:
    static constexpr std::size_t alignment = alignof(std::max_align_t);
    static constexpr std::size_t largest = 128;    // bytes of an object
    static constexpr std::size_t bookkeeping = 64; // more than the size of the reference counts of an object

    struct Chunk {
        static constexpr std::size_t size = 4000; // the whole allocation is less than a page

        static constexpr std::size_t open = size; // more than there can be objects

        // The number of living objects; while the pool fills the chunk, `open` minus the destroyed ones.
        std::atomic<std::size_t> users{open};
        std::size_t made = 0; // not atomic: only the pool counts here
        std::size_t used = 0;
        alignas(alignment) std::byte bytes[size];

        void finish() { release(open - made); }
        void release(std::size_t count = 1) {
            if (users.fetch_sub(count, std::memory_order_acq_rel) == count)
                delete this;
        }
    };

    template <class T>
    struct Allocator {
        using value_type = T;

        Chunk *chunk;

        explicit Allocator(Chunk *itsChunk) : chunk(itsChunk) {}
        template <class Other>
        Allocator(const Allocator<Other> &other) : chunk(other.chunk) {}

        T *allocate(std::size_t count) {
            void *const place = chunk->bytes + chunk->used;
            chunk->used += (count * sizeof(T) + alignment - 1) / alignment * alignment;
            ++chunk->made;
            return static_cast<T *>(place);
        }
        void deallocate(T *, std::size_t) { chunk->release(); }

        template <class Other>
        bool operator==(const Allocator<Other> &other) const {
            return chunk == other.chunk;
        }
    };

    Chunk *chunkWithRoom() {
        if (!chunk_ || Chunk::size - chunk_->used < largest + bookkeeping) {
            auto *const fresh = new Chunk;
            if (chunk_)
                chunk_->finish();
            chunk_ = fresh;
        }
        return chunk_;
    }

    Chunk *chunk_ = nullptr;
};

#pragma GCC visibility pop
