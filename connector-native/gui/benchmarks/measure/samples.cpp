#include "measure/samples.h"

#include <algorithm>

double Samples::median() const
{
    std::vector<double> sorted = m_values;
    std::sort(sorted.begin(), sorted.end());
    const std::size_t middle = sorted.size() / 2;
    return sorted.size() % 2 == 1 ? sorted[middle] : (sorted[middle - 1] + sorted[middle]) / 2;
}

double Samples::largest() const
{
    return *std::max_element(m_values.begin(), m_values.end());
}
