#pragma once

#include "answer.h"
#include "call.h"

namespace simulator {

[[nodiscard]] Answer validate(const Call &call);
[[nodiscard]] Answer loadCredentials(const Call &call);
[[nodiscard]] Answer deleteCredentials(const Call &call);
[[nodiscard]] Answer balance(const Call &call);

} // namespace simulator
