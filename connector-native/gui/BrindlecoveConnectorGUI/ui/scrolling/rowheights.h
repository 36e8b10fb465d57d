#pragma once

#include <vector>

/// The positions of the rows of a long column in which only some rows have been measured; every other row is
/// estimated to have the typical height. Row 0 is the newest; adding a row in front, measuring one and
/// finding one take logarithmic time. Lengths are in logical pixels.
class RowHeights
{
public:
    /// Forgets what was measured and starts over with rows of the typical height.
    void reset(int count, double typicalHeight);

    void prependRow();
    void setHeight(int row, double height);

    [[nodiscard]] int count() const { return static_cast<int>(m_heights.size()); }
    [[nodiscard]] double height(int row) const;
    /// The sum of the heights of all rows before this one; of all rows for the row after the last.
    [[nodiscard]] double offset(int row) const;
    /// The row that lies at an offset; the nearest one beyond the ends. There must be a row.
    [[nodiscard]] int rowAt(double offset) const;

private:
    [[nodiscard]] std::size_t age(int row) const { return m_heights.size() - static_cast<std::size_t>(row); }
    [[nodiscard]] double deviationOfOldest(std::size_t rows) const;

    double m_typicalHeight = 0;
    // Both by age, oldest first, so that a new row is appended. The sums are a Fenwick tree of deviations.
    std::vector<float> m_heights;
    std::vector<double> m_deviations;
};
