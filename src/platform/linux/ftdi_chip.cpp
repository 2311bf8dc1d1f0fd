#include "platform/linux/ftdi_chip.h"

#include <algorithm>
#include <cmath>

#include <ftdi.h>

namespace bitlux {

namespace {

constexpr int fullSpeedClock = 48'000'000;
constexpr int highSpeedClock = 60'000'000;

/// The divisors from 2 on have eighths; the two below are of no use to a cable. The slowest of a
/// high-speed chip is the last before libftdi changes to another clock.
constexpr std::array chips{
    FtdiChip{"FT232R", 0x0600, TYPE_R, 1, fullSpeedClock, 16, 3'000, fullSpeedClock / 2},
    FtdiChip{"FT2232H", 0x0700, TYPE_2232H, 2, highSpeedClock, 5, 4'000, highSpeedClock / 2},
    FtdiChip{"FT4232H", 0x0800, TYPE_4232H, 4, highSpeedClock, 5, 4'000, highSpeedClock / 2},
    FtdiChip{"FT232H", 0x0900, TYPE_232H, 1, highSpeedClock, 5, 4'000, highSpeedClock / 2},
    FtdiChip{"FT-X", 0x1000, TYPE_230X, 1, fullSpeedClock, 16, 3'000, fullSpeedClock / 2},
};

constexpr int eighths = 8;

/// The divisor that libftdi makes of a baud rate, in eighths: it counts sixteenths, cuts what is
/// behind them off, and rounds them up.
int divisorOf(const FtdiChip& chip, int baud) {
    const int baudClock = chip.byteClock / chip.ratio;
    if (baud >= baudClock / 2)
        return 2 * eighths;
    return (baudClock * 2 * eighths / baud + 1) / 2;
}

FtdiRate rateOf(const FtdiChip& chip, int divisor) {
    const double clock = double{eighths} * chip.byteClock;
    const int baud = static_cast<int>(std::lround(clock / chip.ratio / divisor));
    return {.baud = baud, .bytes = clock / divisorOf(chip, baud)};
}

} // namespace

bool isFtdi(const UsbNumbers& numbers) {
    return numbers.vendor == ftdiVendor && std::find(ftdiProducts.begin(), ftdiProducts.end(),
                                                     numbers.product) != ftdiProducts.end();
}

const FtdiChip* findFtdiChip(std::uint16_t release) {
    const auto* const found = std::find_if(
        chips.begin(), chips.end(), [=](const FtdiChip& chip) { return chip.release == release; });
    return found == chips.end() ? nullptr : &*found;
}

std::optional<FtdiRate> nearestRate(const FtdiChip& chip, int bytes) {
    if (bytes < chip.slowest || bytes > chip.fastest)
        return std::nullopt;
    const int divisor = static_cast<int>(std::int64_t{eighths} * chip.byteClock / bytes);
    const FtdiRate faster = rateOf(chip, divisor);
    const FtdiRate slower = rateOf(chip, divisor + 1);
    return std::abs(faster.bytes - bytes) <= std::abs(slower.bytes - bytes) ? faster : slower;
}

} // namespace bitlux
