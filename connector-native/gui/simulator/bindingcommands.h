#pragma once

#include "answer.h"
#include "call.h"

namespace simulator {

[[nodiscard]] Answer status(const Call &call);
[[nodiscard]] Answer serverHealth(const Call &call);
[[nodiscard]] Answer bindStatus(const Call &call);
[[nodiscard]] Answer claimToken(const Call &call);
[[nodiscard]] Answer disconnectBinding(const Call &call);

} // namespace simulator
