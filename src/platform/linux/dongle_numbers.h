#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bitlux {

/// The two numbers that identify a kind of USB device.
struct UsbNumbers {
    std::uint16_t vendor = 0;
    std::uint16_t product = 0;

    bool operator==(const UsbNumbers&) const = default;
};

/// As "1234:abcd".
std::string numbersText(const UsbNumbers& numbers);

/// The numbers of devices that are dongles but do not identify themselves as such: from the files
/// dongles.conf, one `vvvv:pppp` in hexadecimal per line, comments from `#` on.
class DongleNumbers {
public:
    /// Reads the files in their order; one that does not exist counts as empty. An invalid line is
    /// skipped and reported.
    explicit DongleNumbers(const std::vector<std::string>& fileNames);

    /// The files of this machine: the system's, then the user's.
    static std::vector<std::string> files();

    [[nodiscard]] bool contains(const UsbNumbers& numbers) const;
    /// In the order of the files, each once.
    [[nodiscard]] const std::vector<UsbNumbers>& all() const { return numbers_; }
    /// What could not be read, a sentence each with file and line number.
    [[nodiscard]] const std::vector<std::string>& problems() const { return problems_; }

private:
    std::vector<UsbNumbers> numbers_;
    std::vector<std::string> problems_;
};

} // namespace bitlux
