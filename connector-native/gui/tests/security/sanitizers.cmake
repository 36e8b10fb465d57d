# Read by ctest in a build with sanitizers: how they are to run, whatever their user has set.
set(ENV{ASAN_OPTIONS} "detect_leaks=1")
set(ENV{UBSAN_OPTIONS} "print_stacktrace=1")
# Nothing is passed over: neither in Qt nor in what it loads does a test lose memory.
unset(ENV{LSAN_OPTIONS})
