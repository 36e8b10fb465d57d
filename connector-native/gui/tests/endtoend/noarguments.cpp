// Loaded into a program ahead of its libraries, this gives its main function an empty argument list, as
// kernels before Linux 5.18 let anybody do.

#include <dlfcn.h>

namespace {

using Main = int (*)(int, char **, char **);
using Start = int (*)(Main, int, char **, void (*)(), void (*)(), void (*)(), void *);

Main programsOwn = nullptr;

int withoutArguments(int, char **arguments, char **environment)
{
    *arguments = nullptr;
    return programsOwn(0, arguments, environment);
}

} // namespace

// NOLINTNEXTLINE(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): the C library's own name
extern "C" int __libc_start_main(Main main, int count, char **arguments, void (*init)(), void (*fini)(),
                                 void (*unload)(), void *stackEnd)
{
    programsOwn = main;
    const auto start = reinterpret_cast<Start>(dlsym(RTLD_NEXT, "__libc_start_main"));
    return start(withoutArguments, count, arguments, init, fini, unload, stackEnd);
}
