#include "bench/heap.h"

#include <malloc.h>

#include <cstdlib>

Velmara::bench::HeapUse* Velmara::bench::countedUse = nullptr;

using Velmara::bench::countedUse;

namespace {

/// The allocator keeps a word of its own ahead of each block.
qint64 sizeOf(void* block) { return block ? qint64(malloc_usable_size(block) + sizeof(size_t)) : 0; }

void* counted(void* block)
{
    if (countedUse && block) {
        countedUse->bytes += sizeOf(block);
        ++countedUse->allocations;
    }
    return block;
}

void forget(void* block)
{
    if (countedUse)
        countedUse->bytes -= sizeOf(block);
}

} // namespace

// Standing in the program, these take the calls of all libraries too, those of new among them.
extern "C" {

void* __libc_malloc(size_t);
void* __libc_calloc(size_t, size_t);
void* __libc_realloc(void*, size_t);
void __libc_free(void*);

Q_DECL_EXPORT void* malloc(size_t size) noexcept { return counted(__libc_malloc(size)); }
Q_DECL_EXPORT void* calloc(size_t count, size_t size) noexcept { return counted(__libc_calloc(count, size)); }

Q_DECL_EXPORT void* realloc(void* block, size_t size) noexcept
{
    forget(block);
    return counted(__libc_realloc(block, size));
}

Q_DECL_EXPORT void free(void* block) noexcept
{
    forget(block);
    __libc_free(block);
}
}
