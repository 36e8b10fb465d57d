#include "measure/figure.h"

#include <array>
#include <iomanip>
#include <iostream>
#include <sstream>

namespace {

// As many digits as mean something: a ratio of 1.04 needs its two, 1034 kB none.
std::string number(double value)
{
    std::ostringstream text;
    text << std::fixed << std::setprecision(value < 100 ? 2 : 0) << value;
    return text.str();
}

std::string numberOrDash(const std::optional<double> &value)
{
    return value ? number(*value) : "-";
}

std::optional<double> ratioOf(const Figure &figure)
{
    return figure.reference ? std::optional(figure.value / *figure.reference) : std::nullopt;
}

std::string targetText(const Figure &figure)
{
    switch (figure.target.of) {
    case Target::Of::Figure:
        return "<= " + number(figure.target.limit) + " " + figure.unit;
    case Target::Of::Ratio:
        return "<= " + number(figure.target.limit) + " x";
    case Target::Of::Nothing:
        break;
    }
    return "-";
}

std::string verdict(const Figure &figure)
{
    if (figure.target.of == Target::Of::Nothing) {
        return "-";
    }
    const bool ownValue = figure.target.of == Target::Of::Figure;
    const double judged = ownValue ? figure.value : ratioOf(figure).value_or(figure.target.limit + 1);
    return judged <= figure.target.limit ? "met" : "missed";
}

} // namespace

Figure figureOf(const std::string &name, const std::string &unit, const Samples &samples, Target target)
{
    return {name, unit, samples.median(), samples.largest(), std::nullopt, target};
}

void report(const Figure &figure)
{
    const std::array fields{number(figure.value),
                            figure.unit,
                            numberOrDash(figure.worst),
                            numberOrDash(figure.reference),
                            numberOrDash(ratioOf(figure)),
                            targetText(figure),
                            verdict(figure)};
    std::cout << figure.name;
    for (const std::string &field : fields) {
        std::cout << '\t' << field;
    }
    std::cout << std::endl;
}
