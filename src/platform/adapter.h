#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace bitlux {

/// Which line of an adapter stands for which pin of the parallel port's connector.
class AdapterWiring {
public:
    /// The wiring of cables for serial engines: D0 is pin 4 (CLK), D1 pin 3 (DI), D2 pin 12 (DO),
    /// D3 pin 2 (CS), and D4 to D7 are pins 5 to 8.
    static AdapterWiring standard();
    /// No pin has a line.
    AdapterWiring() = default;

    /// Connects a pin (1 to 17) to a line (0 to 7). False, without a change, for a pin that carries
    /// no signal of the port and for one whose line another pin has.
    bool connect(int pin, int line);
    /// Disconnects the lines from `count` on, for chips with fewer than eight.
    void cutFrom(int count);

    /// The line of a pin, nothing where it has none.
    [[nodiscard]] std::optional<int> lineOf(int pin) const;
    /// The pins that have a line, as "2 to 8 and 12".
    [[nodiscard]] std::string pinsText() const;

    bool operator==(const AdapterWiring&) const = default;

private:
    std::array<std::int8_t, 18> lines_{-1, -1, -1, -1, -1, -1, -1, -1, -1,
                                       -1, -1, -1, -1, -1, -1, -1, -1, -1};
};

/// The bytes that an adapter clocks out in a second unless another rate is set.
inline constexpr int standardAdapterClock = 1'000'000;

/// The bytes of an adapter's name that messages show.
inline constexpr std::size_t longestAdapterName = 80;

/// An adapter that is plugged in, with its settings.
struct Adapter {
    std::string type;   ///< as "FT232R"
    std::string serial; ///< its serial number, or empty
    std::string place;  ///< where it is plugged in, as "1-2"
    AdapterWiring wiring = AdapterWiring::standard();
    int clock = standardAdapterClock; ///< bytes a second; the chip makes the nearest it can
    bool keepsLines = false;          ///< its lines keep their levels at the end

    /// Type and serial number, as in lists; without a number its place, as "FT232R at 1-2".
    [[nodiscard]] std::string name() const;

    bool operator==(const Adapter&) const = default;
};

/// As "1 MHz" or "93.75 kHz".
std::string rateText(double bytesPerSecond);

/// An open adapter. Its eight lines are written and sampled together, at a steady rate. All raise
/// Failure (PortUnusable) with a sentence for the user; the link is of no more use then.
class AdapterLink {
public:
    /// All lines become inputs, unless they are to keep their levels, and the system has the
    /// adapter back.
    virtual ~AdapterLink() = default;

    /// The lines of the mask become outputs, the others inputs. All are inputs at first. The
    /// levels written last are those of new outputs.
    virtual void drive(std::uint8_t outputs) = 0;
    /// Writes the bytes one after the other, bit i to line i. Each of `samples` becomes the lines
    /// as they were just before the byte of the same place. Both have the same size, 1 to 4,096.
    virtual void exchange(std::span<const std::uint8_t> bytes, std::span<std::uint8_t> samples) = 0;
    /// The bytes that it clocks out in a second; not changed by anything.
    [[nodiscard]] virtual double rate() const = 0;
};

/// Where adapters are plugged in. Outlives their links.
class AdapterHost {
public:
    virtual ~AdapterHost() = default;
    /// The adapters that are plugged in, in a steady order. Quick, and opens none.
    virtual std::vector<Adapter> find() = 0;
    /// Opens an adapter that find() has listed. Raises Failure (PortUnusable).
    virtual std::unique_ptr<AdapterLink> open(const Adapter& adapter) = 0;
};

} // namespace bitlux
