#pragma once

#include "measure/samples.h"

#include <optional>
#include <string>

/// What a figure has to keep to: itself, or in proportion to its reference.
struct Target
{
    enum class Of { Nothing, Figure, Ratio };

    Of of = Of::Nothing;
    double limit = 0;
};

inline Target atMost(double limit)
{
    return {Target::Of::Figure, limit};
}

inline Target atMostTimes(double limit)
{
    return {Target::Of::Ratio, limit};
}

/// One line of the results.
struct Figure
{
    std::string name;
    std::string unit;
    double value = 0;
    std::optional<double> worst;
    std::optional<double> reference;
    Target target;
};

/// The median of several samples, and the largest of them as the worst.
[[nodiscard]] Figure figureOf(const std::string &name, const std::string &unit, const Samples &samples,
                              Target target = {});

/// Writes a figure to standard output as one line of fields separated by tabs, a dash where there is none:
/// name, figure, unit, worst, reference, ratio, target, verdict ("met" or "missed").
void report(const Figure &figure);
