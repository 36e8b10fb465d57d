# Read by ctest in a build with sanitizers: how they are to run, whatever their user has set.
set(ENV{ASAN_OPTIONS} "detect_leaks=1")
set(ENV{UBSAN_OPTIONS} "print_stacktrace=1")
# No suppressions: no test leaks memory, in Qt or in what it loads.
unset(ENV{LSAN_OPTIONS})
