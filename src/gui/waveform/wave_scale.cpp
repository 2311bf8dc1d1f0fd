#include "gui/waveform/wave_scale.h"

#include <array>

namespace bitlux::gui {

namespace {

struct Unit {
    std::int64_t nanoseconds;
    const char* name;
};

constexpr std::array<Unit, 3> timeUnits{{{1'000'000'000, "s"}, {1'000'000, "ms"}, {1'000, "µs"}}};

} // namespace

std::int64_t WaveScale::rulerStep(double pixels) const {
    const double least = pixels * nsPerPixel;
    for (std::int64_t power = 1;; power *= 10)
        for (const std::int64_t step : {power, 2 * power, 5 * power})
            if (static_cast<double>(step) >= least)
                return step;
}

QString timeText(std::int64_t nanoseconds, std::int64_t step) {
    Unit unit = timeUnits.back();
    for (const Unit& larger : timeUnits)
        if (step >= larger.nanoseconds) {
            unit = larger;
            break;
        }
    int decimals = 0;
    for (std::int64_t part = unit.nanoseconds; step % part != 0 && part > 1; part /= 10)
        ++decimals;
    const double value = static_cast<double>(nanoseconds) / static_cast<double>(unit.nanoseconds);
    return QString("%1 %2").arg(value, 0, 'f', decimals).arg(unit.name);
}

QString frequencyText(std::int64_t nanoseconds) {
    double value = 1e9 / static_cast<double>(nanoseconds);
    const char* unit = "Hz";
    for (const char* larger : {"kHz", "MHz", "GHz"})
        if (value >= 1000) {
            value /= 1000;
            unit = larger;
        }
    constexpr int digits = 4;
    return QString("%1 %2").arg(value, 0, 'g', digits).arg(unit);
}

} // namespace bitlux::gui
