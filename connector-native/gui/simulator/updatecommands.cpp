#include "updatecommands.h"

#include "statestore.h"

#include <algorithm>
#include <array>

namespace simulator {

namespace {

    constexpr std::string_view updateFile = "update";

    /// One command's answer in a step of the update, and the step that comes next; none when it is refused.
    struct Move
    {
        std::string_view answer;
        std::string_view next;
    };

    struct UpdateStep
    {
        std::string_view name;
        std::string_view installedVersion;
        std::string_view checkAnswer;
        Move download;
        Move apply;
    };

    constexpr UpdateStep available = {
        .name = "available",
        .installedVersion = "1.3.2",
        .checkAnswer = "update=available\ncurrent_version=1.3.2\nlatest_version=1.4.0\nsize_bytes=8421376\n",
        .download = {"update=downloaded\nversion=1.4.0\nverified=true\nRun update-apply to install it.\n",
                     "downloaded"},
        .apply = {"update=nothing_to_apply\nNo downloaded version found. Run update-download first.\n", {}},
    };

    constexpr UpdateStep downloaded = {
        .name = "downloaded",
        .installedVersion = "1.3.2",
        .checkAnswer =
            "update=downloaded\ncurrent_version=1.3.2\nlatest_version=1.4.0\nWaiting to be installed.\n",
        .download = {"update=downloaded\nversion=1.4.0\nAlready downloaded.\n", "downloaded"},
        .apply = {"update=applied\nprevious_version=1.3.2\ncurrent_version=1.4.0\n", "applied"},
    };

    constexpr UpdateStep applied = {
        .name = "applied",
        .installedVersion = "1.4.0",
        .checkAnswer =
            "update=none\ncurrent_version=1.4.0\nlatest_version=1.4.0\nThis is the latest version.\n",
        .download = {"update=none\nThere is nothing newer than 1.4.0 to download.\n", "applied"},
        .apply = {"update=none\nVersion 1.4.0 is already installed.\n", "applied"},
    };

    constexpr std::array updateSteps = {available, downloaded, applied};

    [[nodiscard]] const UpdateStep &currentStep(const StateStore &store)
    {
        const auto name = valueOf(store.read(updateFile), "step").value_or("");
        const auto found = std::ranges::find(updateSteps, name, &UpdateStep::name);
        return found == updateSteps.end() ? updateSteps.front() : *found;
    }

    [[nodiscard]] Answer make(const Move &move, const StateStore &store)
    {
        if (move.next.empty())
            return {std::string(move.answer), {}, 1};
        if (!store.write(updateFile, {{"step", std::string(move.next)}}))
            return {"update=failed\nreason=state_not_writable\n", {}, 1};
        return {std::string(move.answer), {}, 0};
    }

} // namespace

Answer updateCheck(const Call &call)
{
    return {std::string(currentStep(call.store).checkAnswer), {}, 0};
}

Answer updateDownload(const Call &call)
{
    return make(currentStep(call.store).download, call.store);
}

Answer updateApply(const Call &call)
{
    return make(currentStep(call.store).apply, call.store);
}

std::string_view installedVersion(const StateStore &store)
{
    return currentStep(store).installedVersion;
}

} // namespace simulator
