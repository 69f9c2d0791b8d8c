#include "Capabilities/ClipboardHistory/Panel/HistoryRowHeights.h"

#include <algorithm>

namespace orvane {

void HistoryRowHeights::reset(const std::vector<int>& heights)
{
    m_tops.assign(1, 0);
    m_tops.reserve(heights.size() + 1);
    for (const int height : heights)
        m_tops.push_back(m_tops.back() + height);
}

void HistoryRowHeights::set(int row, int height)
{
    const int growth = height - this->height(row);
    if (growth == 0)
        return;
    std::for_each(m_tops.begin() + row + 1, m_tops.end(), [growth](int& top) { top += growth; });
}

int HistoryRowHeights::rowAt(int y) const
{
    const auto below = std::upper_bound(m_tops.begin(), m_tops.end(), y);
    return std::clamp(static_cast<int>(below - m_tops.begin()) - 1, count() > 0 ? 0 : -1, count() - 1);
}

} // namespace orvane
