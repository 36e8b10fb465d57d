#pragma once

#include <string>

namespace simulator {

/// What one command has to say, before any fault is applied to it.
struct Answer
{
    std::string output;
    std::string errors;
    int exitCode = 0;
};

} // namespace simulator
