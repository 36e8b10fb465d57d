// Loaded into a program ahead of its libraries, this refuses it each thread that it asks of the C++ library,
// as a system does that has none left. Others get theirs: without one, Qt has no display.

#include <cerrno>
#include <cstring>
#include <dlfcn.h>
#include <pthread.h>

namespace {

using Create = int (*)(pthread_t *, const pthread_attr_t *, void *(*)(void *), void *);

bool isOfStandardLibrary(void *caller)
{
    Dl_info place{};
    return dladdr(caller, &place) != 0 && std::strstr(place.dli_fname, "libstdc++") != nullptr;
}

} // namespace

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the C library's names are reserved
extern "C" int pthread_create(pthread_t *thread, const pthread_attr_t *attributes, void *(*body)(void *),
                              void *argument)
{
    static const auto create = reinterpret_cast<Create>(dlsym(RTLD_NEXT, "pthread_create"));
    return isOfStandardLibrary(__builtin_return_address(0)) ? EAGAIN
                                                            : create(thread, attributes, body, argument);
}
