// The places of rows of different heights, one below the other. A value.
//
// A list of thousands guesses them first and measures those that come into view.
#pragma once

#include <vector>

namespace orvane {

class HistoryRowHeights {
public:
    void reset(const std::vector<int>& heights);
    /// Sets a height, which moves all rows below.
    void set(int row, int height);

    [[nodiscard]] int count() const { return static_cast<int>(m_tops.size()) - 1; }
    [[nodiscard]] int top(int row) const { return m_tops[static_cast<std::size_t>(row)]; }
    [[nodiscard]] int height(int row) const { return top(row + 1) - top(row); }
    [[nodiscard]] int total() const { return m_tops.back(); }
    /// Returns the row at `y`; the first or the last one beyond them, and -1 where there is none.
    [[nodiscard]] int rowAt(int y) const;

private:
    std::vector<int> m_tops{0}; // and the end of the last row
};

} // namespace orvane
