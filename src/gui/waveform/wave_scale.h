#pragma once

#include <cstdint>

#include <QString>

namespace bitlux::gui {

/// Maps the time of a word to positions: nanoseconds to logical pixels from the left.
struct WaveScale {
    double from = 0;         ///< nanoseconds at pixel 0
    double nsPerPixel = 1.0; ///< above 0

    [[nodiscard]] double x(double at) const { return (at - from) / nsPerPixel; }
    [[nodiscard]] double at(double pixel) const { return from + pixel * nsPerPixel; }

    /// Distance of the marks of a ruler: 1, 2 or 5 times a power of ten nanoseconds, and at least
    /// this number of pixels.
    [[nodiscard]] std::int64_t rulerStep(double pixels) const;
};

/// "12.5 µs", with the decimals that distinguish times which differ by `step` nanoseconds.
QString timeText(std::int64_t nanoseconds, std::int64_t step);

/// "333.3 kHz", with four digits: the frequency of this period in nanoseconds, above 0.
QString frequencyText(std::int64_t nanoseconds);

} // namespace bitlux::gui
