#include "platform/linux/parport_list.h"

#include "platform/parallel_port.h"

#include <charconv>
#include <fstream>
#include <system_error>
#include <utility>

#include <linux/parport.h>

#include <fmt/format.h>

namespace bitlux {

ParportList::ParportList(std::string folder) : folder_(std::move(folder)) {}

std::uint16_t ParportList::baseAddress(int number) const {
    std::ifstream file(fmt::format("{}/parport{}/base-addr", folder_, number));
    std::string first; // the second number is the base of the extended registers
    file >> first;
    std::uint16_t base = 0;
    const char* const end = first.data() + first.size();
    const auto [rest, error] = std::from_chars(first.data(), end, base);
    const bool isNumber = error == std::errc() && rest == end;
    return isNumber ? base : std::uint16_t{0};
}

std::optional<ParportList::Port> ParportList::owner(std::uint16_t address) const {
    for (int number = 0; number < PARPORT_MAX; ++number) {
        const std::uint16_t base = baseAddress(number);
        if (base != 0 && address >= base && address <= base + controlRegister)
            return Port{number, base};
    }
    return std::nullopt;
}

} // namespace bitlux
