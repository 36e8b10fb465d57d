#pragma once

#include "answer.h"
#include "call.h"

namespace simulator {

/// Answers a whole command line, without the program's own name. An unknown command word or a wrong number of
/// arguments is answered with the usage on the error stream and exit status 2.
[[nodiscard]] Answer answerTo(const Call &commandLine);

} // namespace simulator
