#pragma once

#include <cstdint>

#include <QString>

namespace bitlux::gui {

/// Which stretch of a word's time stands where: nanoseconds to logical pixels from the left.
struct WaveScale {
    double from = 0;         ///< nanoseconds at pixel 0
    double nsPerPixel = 1.0; ///< above 0

    [[nodiscard]] double x(double at) const { return (at - from) / nsPerPixel; }
    [[nodiscard]] double at(double pixel) const { return from + pixel * nsPerPixel; }

    /// Distance of the marks of a ruler: 1, 2 or 5 times a power of ten nanoseconds, and as many
    /// pixels at least.
    [[nodiscard]] std::int64_t rulerStep(double pixels) const;
};

/// "12.5 µs", with as many decimals as tell times apart that differ by `step` nanoseconds.
QString timeText(std::int64_t nanoseconds, std::int64_t step);

/// "333.3 kHz", with four digits: how often something happens each so many nanoseconds, above 0.
QString frequencyText(std::int64_t nanoseconds);

} // namespace bitlux::gui
