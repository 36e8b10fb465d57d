#pragma once

#include <chrono>
#include <utility>
#include <vector>

/// Repeated measurements of one thing, in whatever unit they were taken.
class Samples
{
public:
    void add(double value) { m_values.push_back(value); }

    [[nodiscard]] bool isEmpty() const { return m_values.empty(); }
    /// Of an even number, the mean of the two in the middle. There must be a sample.
    [[nodiscard]] double median() const;
    [[nodiscard]] double largest() const;

private:
    std::vector<double> m_values;
};

/// How long an action took by the wall clock.
template <typename Action> [[nodiscard]] double milliseconds(Action &&action)
{
    const auto start = std::chrono::steady_clock::now();
    std::forward<Action>(action)();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}
