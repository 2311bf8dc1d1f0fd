#include "platform/linux/dongle_numbers.h"

#include "platform/conversions.h"
#include "platform/linux/file_start.h"
#include "platform/linux/user_folder.h"
#include "platform/printable.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <optional>
#include <string_view>

#include <fmt/format.h>

namespace bitlux {

namespace {

/// More than any list written by hand; limits the time for a wrong file.
constexpr std::size_t mostNumbersBytes = 65536;
constexpr std::size_t mostBadLinesTold = 5;
constexpr std::size_t mostOfALineTold = 40;

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::optional<UsbNumbers> numbersOf(std::string_view text) {
    if (text.size() != 9 || text[4] != ':')
        return std::nullopt;
    const auto vendor = wholeNumber<std::uint16_t>(text.substr(0, 4), 16);
    const auto product = wholeNumber<std::uint16_t>(text.substr(5), 16);
    if (!vendor || !product)
        return std::nullopt;
    return UsbNumbers{*vendor, *product};
}

/// One file on its way into the list.
class Reading {
public:
    Reading(const std::string& fileName, std::vector<UsbNumbers>& numbers,
            std::vector<std::string>& problems)
        : fileName_(fileName), numbers_(numbers), problems_(problems) {}

    void run() {
        FileStart file = readFileStart(fileName_, mostNumbersBytes);
        if (file.error == ENOENT || file.error == ENOTDIR)
            return;
        if (file.error != 0) {
            problems_.push_back(fmt::format("The file {} cannot be read: {}.", fileName_,
                                            std::strerror(file.error)));
            return;
        }
        if (!file.isWhole) // the last line is not whole either
            file.bytes.resize(file.bytes.rfind('\n') + 1);
        takeLines(file.bytes);
        if (badLines_ > mostBadLinesTold)
            problems_.push_back(fmt::format("{}: and {} more such lines.", fileName_,
                                            badLines_ - mostBadLinesTold));
        if (!file.isWhole)
            problems_.push_back(fmt::format("{} is longer than {} bytes. The rest is left out.",
                                            fileName_, mostNumbersBytes));
    }

private:
    void takeLines(std::string_view text) {
        for (std::size_t number = 1; !text.empty(); ++number) {
            const std::size_t length = std::min(text.find('\n'), text.size());
            takeLine(text.substr(0, length), number);
            text.remove_prefix(std::min(length + 1, text.size()));
        }
    }

    void takeLine(std::string_view line, std::size_t number) {
        const std::string_view content = trimmed(line.substr(0, line.find('#')));
        if (content.empty())
            return;
        if (const std::optional<UsbNumbers> numbers = numbersOf(content))
            add(*numbers);
        else if (++badLines_ <= mostBadLinesTold)
            problems_.push_back(
                fmt::format("{}, line {}: \"{}\" is no pair of numbers such as 1234:abcd.",
                            fileName_, number, printable(content, mostOfALineTold)));
    }

    void add(const UsbNumbers& numbers) {
        if (std::find(numbers_.begin(), numbers_.end(), numbers) == numbers_.end())
            numbers_.push_back(numbers);
    }

    const std::string& fileName_;
    std::vector<UsbNumbers>& numbers_;
    std::vector<std::string>& problems_;
    std::size_t badLines_ = 0;
};

} // namespace

std::string numbersText(const UsbNumbers& numbers) {
    return fmt::format("{:04x}:{:04x}", numbers.vendor, numbers.product);
}

DongleNumbers::DongleNumbers(const std::vector<std::string>& fileNames) {
    for (const std::string& fileName : fileNames)
        Reading(fileName, numbers_, problems_).run();
}

std::vector<std::string> DongleNumbers::files() {
    std::vector<std::string> names{"/etc/bitlux-forge/dongles.conf"};
    if (const std::string folder = userFolder(); !folder.empty())
        names.push_back(folder + "/dongles.conf");
    return names;
}

bool DongleNumbers::contains(const UsbNumbers& numbers) const {
    return std::find(numbers_.begin(), numbers_.end(), numbers) != numbers_.end();
}

} // namespace bitlux
