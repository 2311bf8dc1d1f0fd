#include "platform/chosen_port.h"

#include "platform/conversions.h"
#include "platform/failure.h"
#include "platform/letters.h"

#include <optional>
#include <system_error>
#include <vector>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux {

namespace {

constexpr std::int16_t lastNumber = 3;

std::optional<std::uint16_t> numberIn(std::string_view text, int base) {
    const std::optional<std::uint16_t> number = wholeNumber<std::uint16_t>(text, base);
    return number && *number != 0 ? number : std::nullopt;
}

bool isLpt(std::string_view text) {
    return text.size() == 4 && equalIgnoringCase(text.substr(0, 3), "lpt") && text[3] >= '1' &&
           text[3] < '1' + lastNumber;
}

std::string described(std::int16_t number, std::int16_t address) {
    return fmt::format("LPT{} at 0x{:X}", number, static_cast<std::uint16_t>(address));
}

} // namespace

PortChoice portChoiceFrom(std::string_view text) {
    if (isLpt(text))
        return {.number = static_cast<std::int16_t>(text[3] - '0')};
    const bool isHex = text.starts_with("0x") || text.starts_with("0X");
    const std::optional<std::uint16_t> address =
        isHex ? numberIn(text.substr(2), 16) : numberIn(text, 10);
    if (!address)
        throw Failure(Failure::Kind::Conversion,
                      "A parallel port is lpt1, lpt2, lpt3 or an address such as 0x378");
    return {.address = *address};
}

ChosenPort::ChosenPort(ParallelPort& machine, PortChoice choice)
    : ParallelPort(machine.IsWinNT()), machine_(machine), choice_(choice) {}

void ChosenPort::demand() const {
    std::vector<std::string> others;
    for (std::int16_t number = 1; number <= lastNumber; ++number) {
        const std::int16_t address = machine_.GetLPTPortAddress(number);
        if (isChosen(number, address))
            return;
        if (address != 0)
            others.push_back(described(number, address));
    }
    throw Failure(Failure::Kind::PortUnusable,
                  others.empty()
                      ? fmt::format("There is no parallel port {}, nor any other; \"bitlux "
                                    "doctor\" tells what is missing.",
                                    name())
                      : fmt::format("There is no parallel port {}; there is {}.", name(),
                                    fmt::join(others, ", ")));
}

std::int32_t ChosenPort::Inp(std::int16_t address) {
    demandOwn(address);
    return machine_.Inp(address);
}

void ChosenPort::Outp(std::int16_t address, std::int16_t value) {
    demandOwn(address);
    machine_.Outp(address, value);
}

void ChosenPort::EnablePorts(std::int16_t first, std::int16_t last) {
    machine_.EnablePorts(first, last);
}

void ChosenPort::DisablePorts(std::int16_t first, std::int16_t last) {
    machine_.DisablePorts(first, last);
}

std::int16_t ChosenPort::GetLPTPortAddress(std::int16_t number) {
    const std::int16_t address = machine_.GetLPTPortAddress(number);
    if (!isChosen(number, address))
        return 0;
    base_ = static_cast<std::uint16_t>(address);
    return address;
}

void ChosenPort::SetFastMode(std::int32_t mode) {
    ParallelPort::SetFastMode(mode);
    machine_.SetFastMode(mode);
}

bool ChosenPort::isChosen(std::int16_t number, std::int16_t address) const {
    if (address == 0)
        return false;
    return choice_.number != 0 ? number == choice_.number
                               : static_cast<std::uint16_t>(address) == choice_.address;
}

std::string ChosenPort::name() const {
    return choice_.number != 0 ? fmt::format("LPT{}", choice_.number)
                               : fmt::format("at 0x{:X}", choice_.address);
}

void ChosenPort::demandOwn(std::int16_t address) {
    const auto wanted = static_cast<std::uint16_t>(address);
    if (base_ == 0 || wanted < base_ || wanted - base_ > controlRegister)
        throw Failure(Failure::Kind::PortUnusable,
                      fmt::format("The settings want the parallel port at 0x{:X}, and the one {} "
                                  "was chosen.",
                                  wanted, name()));
}

} // namespace bitlux
