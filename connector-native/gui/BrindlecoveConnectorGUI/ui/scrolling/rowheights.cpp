#include "ui/scrolling/rowheights.h"

namespace {

constexpr std::size_t lowestBit(std::size_t index)
{
    return index & (~index + 1);
}

} // namespace

void RowHeights::reset(int count, double typicalHeight)
{
    m_typicalHeight = typicalHeight;
    m_heights.assign(static_cast<std::size_t>(count), static_cast<float>(typicalHeight));
    m_deviations.assign(static_cast<std::size_t>(count), 0);
}

void RowHeights::prependRow()
{
    const std::size_t index = m_heights.size() + 1;
    const std::size_t covered = index - lowestBit(index);
    m_heights.push_back(static_cast<float>(m_typicalHeight));
    m_deviations.push_back(deviationOfOldest(index - 1) - deviationOfOldest(covered));
}

void RowHeights::setHeight(int row, double height)
{
    float &stored = m_heights[age(row) - 1];
    const double change = static_cast<double>(static_cast<float>(height)) - static_cast<double>(stored);
    stored = static_cast<float>(height);
    for (std::size_t index = age(row); index <= m_deviations.size(); index += lowestBit(index)) {
        m_deviations[index - 1] += change;
    }
}

double RowHeights::height(int row) const
{
    return static_cast<double>(m_heights[age(row) - 1]);
}

double RowHeights::deviationOfOldest(std::size_t rows) const
{
    double sum = 0;
    for (std::size_t index = rows; index > 0; index -= lowestBit(index)) {
        sum += m_deviations[index - 1];
    }
    return sum;
}

double RowHeights::offset(int row) const
{
    return row * m_typicalHeight + deviationOfOldest(m_heights.size()) - deviationOfOldest(age(row));
}

int RowHeights::rowAt(double offset) const
{
    int first = 0;
    int last = count() - 1;
    while (first < last) {
        const int middle = first + (last - first + 1) / 2;
        if (this->offset(middle) <= offset) {
            first = middle;
        } else {
            last = middle - 1;
        }
    }
    return first;
}
