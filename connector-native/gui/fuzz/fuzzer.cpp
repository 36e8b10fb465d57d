// libFuzzer's way to the target that is named in the environment.

#include "fuzzing.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const auto check = fuzzTargets().at(qEnvironmentVariable("FUZZ_TARGET").toStdString());
    check({reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)});
    return 0;
}
