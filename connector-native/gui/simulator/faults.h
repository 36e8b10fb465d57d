#pragma once

#include "answer.h"

#include <chrono>
#include <optional>
#include <string_view>

namespace simulator {

class Settings;

/// What is to go wrong with one call; nothing by default.
struct Faults
{
    std::chrono::milliseconds delay{0};
    std::optional<int> exitCode;
    int signal = 0;
    unsigned long long floodBytes = 0;
    bool hasInvalidUtf8 = false;
    bool isSilent = false;
};

/// The faults that the settings ask for; none when they are meant for another command word.
[[nodiscard]] Faults faultsFor(std::string_view commandWord, const Settings &settings);

/// Waits as long as the call is to be delayed.
void delay(const Faults &faults);

/// Prints the answer as the faults have it and returns the exit status; with a signal it prints half and, for
/// the signals that end a process, does not return.
[[nodiscard]] int deliver(const Answer &answer, const Faults &faults);

} // namespace simulator
