#pragma once

#include <span>
#include <string_view>

namespace simulator {

class Settings;
class StateStore;

/// What a command gets to work with: the arguments after its command word, already counted.
struct Call
{
    std::span<const std::string_view> arguments;
    const StateStore &store;
    const Settings &settings;
};

} // namespace simulator
