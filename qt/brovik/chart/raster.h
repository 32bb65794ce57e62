#pragma once

/// How the chart is drawn.
namespace Raster {

/// Pixels. The raster engine hands the parts of a longer line to other threads, which takes far longer than
/// to draw them.
inline constexpr double longestSteepLine = 24.0;

} // namespace Raster
