// SPDX-License-Identifier: MIT
#include "unit/audio/linux/CountedCalls.h"

#include <dlfcn.h>
#include <pthread.h>
#include <semaphore.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <ctime>

// Functions of the program come before those of the C library, for every library in the process,
// so the definitions below receive the calls of the code under test, of the standard library and of
// operator new alike.

namespace
{

constexpr std::size_t maximumCalls = 64;

thread_local bool isCounting = false;
thread_local std::size_t callCount = 0;
thread_local std::array<const char*, maximumCalls> calls;

void count(const char* name)
{
    if (isCounting && callCount < maximumCalls)
        calls[callCount++] = name;
}

/// The C library's function of the type and name.
template <typename Function> Function* next(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

namespace clavo
{

std::vector<std::string> callsMadeBy(const std::function<void()>& action)
{
    callCount = 0;
    isCounting = true;
    action();
    isCounting = false;
    return {calls.begin(), calls.begin() + callCount};
}

} // namespace clavo

extern "C" {

// The allocator is called before dlsym() can be: glibc has its own under second names.
// NOLINTBEGIN(bugprone-reserved-identifier,readability-identifier-naming): glibc's names.
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* memory);
// NOLINTEND(bugprone-reserved-identifier,readability-identifier-naming)

void* malloc(std::size_t size)
{
    count("malloc");
    return __libc_malloc(size);
}

void* calloc(std::size_t number, std::size_t size)
{
    count("calloc");
    return __libc_calloc(number, size);
}

void* realloc(void* memory, std::size_t size)
{
    count("realloc");
    return __libc_realloc(memory, size);
}

void* memalign(std::size_t alignment, std::size_t size)
{
    count("memalign");
    return __libc_memalign(alignment, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size)
{
    count("aligned_alloc");
    return __libc_memalign(alignment, size);
}

int posix_memalign(void** memory, std::size_t alignment, std::size_t size)
{
    count("posix_memalign");
    *memory = __libc_memalign(alignment, size);
    return *memory == nullptr ? ENOMEM : 0;
}

void free(void* memory)
{
    count("free");
    __libc_free(memory);
}

int pthread_mutex_lock(pthread_mutex_t* mutex)
{
    static auto* const original = next<decltype(pthread_mutex_lock)>("pthread_mutex_lock");
    count("pthread_mutex_lock");
    return original(mutex);
}

int pthread_mutex_trylock(pthread_mutex_t* mutex)
{
    static auto* const original = next<decltype(pthread_mutex_trylock)>("pthread_mutex_trylock");
    count("pthread_mutex_trylock");
    return original(mutex);
}

int pthread_rwlock_rdlock(pthread_rwlock_t* lock)
{
    static auto* const original = next<decltype(pthread_rwlock_rdlock)>("pthread_rwlock_rdlock");
    count("pthread_rwlock_rdlock");
    return original(lock);
}

int pthread_rwlock_wrlock(pthread_rwlock_t* lock)
{
    static auto* const original = next<decltype(pthread_rwlock_wrlock)>("pthread_rwlock_wrlock");
    count("pthread_rwlock_wrlock");
    return original(lock);
}

int pthread_cond_wait(pthread_cond_t* condition, pthread_mutex_t* mutex)
{
    static auto* const original = next<decltype(pthread_cond_wait)>("pthread_cond_wait");
    count("pthread_cond_wait");
    return original(condition, mutex);
}

int pthread_cond_signal(pthread_cond_t* condition)
{
    static auto* const original = next<decltype(pthread_cond_signal)>("pthread_cond_signal");
    count("pthread_cond_signal");
    return original(condition);
}

int pthread_cond_broadcast(pthread_cond_t* condition)
{
    static auto* const original = next<decltype(pthread_cond_broadcast)>("pthread_cond_broadcast");
    count("pthread_cond_broadcast");
    return original(condition);
}

int sem_wait(sem_t* semaphore)
{
    static auto* const original = next<decltype(sem_wait)>("sem_wait");
    count("sem_wait");
    return original(semaphore);
}

int nanosleep(const timespec* duration, timespec* remaining)
{
    static auto* const original = next<decltype(nanosleep)>("nanosleep");
    count("nanosleep");
    return original(duration, remaining);
}

ssize_t write(int file, const void* data, std::size_t size)
{
    static auto* const original = next<decltype(write)>("write");
    count("write");
    return original(file, data, size);
}

} // extern "C"
