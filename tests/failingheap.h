#pragma once

/// A heap that fails on demand, in place of the program's own: for one source of a program. Where a sanitizer has taken
/// that place already, it is operator new alone that fails, and not what Qt's containers ask of malloc.

#include <QtGlobal>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <execinfo.h>
#include <iterator>
#include <new>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define VELMARA_SANITIZED
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define VELMARA_SANITIZED
#endif
#endif

namespace FailingHeap {

std::atomic<int> untilFailure = 0;
std::atomic<bool> isLasting = false, isExhausted = false;
std::atomic<int> held = 0; ///< how many blocks

void* callers[64];
int callerCount = 0;

bool isRefused()
{
    if (isExhausted)
        return true;
    if (untilFailure <= 0 || --untilFailure != 0)
        return false;
    callerCount = backtrace(callers, int(std::size(callers)));
    isExhausted = isLasting.load();
    return true;
}

void* counted(void* block)
{
    held += block != nullptr;
    return block;
}

void* forgotten(void* block)
{
    held -= block != nullptr;
    return block;
}

/// Lets the n-th request from now on fail, and no other or all later ones too.
void failAt(int n, bool andAllLater)
{
    isLasting = andAllLater;
    untilFailure = n;
}

/// Ends that; tells whether the request came.
bool hasFailed()
{
    isExhausted = false;
    return untilFailure.exchange(0) == 0;
}

/// Whether the request came from within a function, given by a part of its linkage name.
bool hasFailedWithin(const char* name)
{
    return std::any_of(callers, callers + callerCount, [=](const void* caller) {
        Dl_info info{};
        return dladdr(caller, &info) != 0 && info.dli_sname && std::strstr(info.dli_sname, name);
    });
}

} // namespace FailingHeap

#ifdef VELMARA_SANITIZED

/// What constructors of Qt lose when they fail, see memorytests.cpp.
extern "C" Q_DECL_EXPORT const char* __lsan_default_suppressions() { return "leak:libQt5Core.so"; }

Q_DECL_EXPORT void* operator new(size_t size)
{
    if (FailingHeap::isRefused())
        throw std::bad_alloc();
    return FailingHeap::counted(std::malloc(size));
}

Q_DECL_EXPORT void operator delete(void* block) noexcept { std::free(FailingHeap::forgotten(block)); }
Q_DECL_EXPORT void operator delete(void* block, size_t) noexcept { operator delete(block); }

#else

extern "C" {
void* __libc_malloc(size_t);
void* __libc_calloc(size_t, size_t);
void* __libc_realloc(void*, size_t);
void __libc_free(void*);

Q_DECL_EXPORT void* malloc(size_t size) noexcept
{
    return FailingHeap::isRefused() ? nullptr : FailingHeap::counted(__libc_malloc(size));
}
Q_DECL_EXPORT void* calloc(size_t n, size_t size) noexcept
{
    return FailingHeap::isRefused() ? nullptr : FailingHeap::counted(__libc_calloc(n, size));
}
Q_DECL_EXPORT void* realloc(void* block, size_t size) noexcept
{
    void* const moved = FailingHeap::isRefused() ? nullptr : __libc_realloc(block, size);
    FailingHeap::held += moved && !block;
    return moved;
}
Q_DECL_EXPORT void free(void* block) noexcept { __libc_free(FailingHeap::forgotten(block)); }
}

#endif
