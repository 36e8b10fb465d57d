# Read by ctest in a build with sanitizers: how they are to run, whatever their user has set.
set(ENV{ASAN_OPTIONS} "detect_leaks=1")
set(ENV{UBSAN_OPTIONS} "print_stacktrace=1")
# Only what graphics and input libraries of Debian 13 lose themselves is passed over.
set(ENV{LSAN_OPTIONS} "suppressions=${CMAKE_CURRENT_LIST_DIR}/leaks-of-libraries.txt:print_suppressions=0")
