#include "platform/linux/dongle_search.h"

#include "platform/letters.h"
#include "platform/linux/ftdi_chip.h"
#include "platform/linux/node_holders.h"
#include "platform/linux/os_descriptors.h"
#include "platform/linux/usb_connection.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>

#include <fmt/format.h>

namespace bitlux {

bool isSameDevice(const UsbCandidate& one, const UsbCandidate& other) {
    return one.bus == other.bus && one.address == other.address && one.numbers == other.numbers;
}

std::vector<UsbCandidate> DongleSearch::find(std::string_view deviceInterfaceClass) {
    std::vector<UsbCandidate> candidates = findUsbCandidates(places_.devices);
    forgetAllBut(candidates);
    if (!serial_.empty())
        std::erase_if(candidates, [this](const auto& other) { return other.serial != serial_; });
    if (candidates.empty())
        return candidates;
    const DongleNumbers numbers(places_.numberFiles);
    std::erase_if(candidates, [&](const UsbCandidate& candidate) {
        return !numbers.contains(candidate.numbers) && !names(candidate, deviceInterfaceClass);
    });
    return candidates;
}

std::string DongleSearch::node(const UsbCandidate& candidate) const {
    return fmt::format("{}/{:03}/{:03}", places_.nodes, candidate.bus, candidate.address);
}

std::string DongleSearch::holders(const UsbCandidate& candidate) const {
    return holdersText(findHolders(usbNode(candidate), places_.processes));
}

bool DongleSearch::names(const UsbCandidate& candidate, std::string_view deviceInterfaceClass) {
    if (isFtdi(candidate.numbers)) // an adapter, which has such pipes too
        return false;
    const Answer* const answer = answerOf(candidate);
    return answer != nullptr &&
           std::any_of(answer->classes.begin(), answer->classes.end(), [&](const auto& name) {
               return equalIgnoringCase(name, deviceInterfaceClass);
           });
}

/// What a device has answered, now or before; null while it cannot be asked or does not answer.
const DongleSearch::Answer* DongleSearch::answerOf(const UsbCandidate& candidate) {
    const auto known = std::find_if(answers_.begin(), answers_.end(), [&](const Answer& answer) {
        return isSameDevice(answer.device, candidate);
    });
    if (known != answers_.end())
        return &*known;
    UsbConnection connection(node(candidate));
    if (connection.status() != UsbStatus::Success)
        return nullptr;
    bool answers = true; // or refuses, which is an answer as well
    const auto ask =
        [&](const ControlQuestion& question) -> std::optional<std::vector<std::uint8_t>> {
        std::vector<std::uint8_t> answer;
        if (!answers) // it is slow; each question would take its time
            return std::nullopt;
        const UsbStatus status = connection.ask(question, answer);
        answers = status == UsbStatus::Success || status == UsbStatus::Failed;
        return status == UsbStatus::Success ? std::optional(std::move(answer)) : std::nullopt;
    };
    std::vector<std::string> classes = deviceInterfaceClasses(ask, connection.usbVersion());
    if (!answers)
        return nullptr;
    answers_.push_back({candidate, std::move(classes)});
    return &answers_.back();
}

void DongleSearch::forgetAllBut(const std::vector<UsbCandidate>& present) {
    std::erase_if(answers_, [&](const Answer& answer) {
        return std::none_of(present.begin(), present.end(), [&](const UsbCandidate& candidate) {
            return isSameDevice(answer.device, candidate);
        });
    });
}

} // namespace bitlux
