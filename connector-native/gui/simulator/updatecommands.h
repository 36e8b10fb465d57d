#pragma once

#include "answer.h"
#include "call.h"

#include <string_view>

namespace simulator {

[[nodiscard]] Answer updateCheck(const Call &call);
[[nodiscard]] Answer updateDownload(const Call &call);
[[nodiscard]] Answer updateApply(const Call &call);

/// The version that the stand-in pretends to be: the new one once an update has been applied.
[[nodiscard]] std::string_view installedVersion(const StateStore &store);

} // namespace simulator
