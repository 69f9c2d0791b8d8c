// Measures of a page that its parts share, in points.
#pragma once

namespace orvane::OrvaPageMetrics {

/// The room that a page's header and banner have beyond the end of its content: for the focus rings of
/// controls, so that what is seen of these ends where the cards do.
inline constexpr int overhang = 8;

} // namespace orvane::OrvaPageMetrics
