#include "config/adapter_entries.h"

#include "platform/conversions.h"

#include <algorithm>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux {

namespace {

/// The number of a pin as the dialog shows it. "7" of the data output reads pin 12.
int pinNumber(const PinField& field) {
    const int number = wholeNumber<int>(field.field->text()).value_or(0);
    return field.line == "DO" && number == 7 ? 12 : number;
}

} // namespace

bool AdapterEntries::addFound() {
    const std::vector<std::string>& items = list_.items();
    std::erase_if(entries_, [&items](const Adapter& entry) { // the list was emptied since
        return std::find(items.begin(), items.end(), entry.name()) == items.end();
    });
    const std::vector<Adapter>& found = adapters_.search();
    for (const Adapter& adapter : found) {
        const auto known =
            std::find_if(entries_.begin(), entries_.end(), [&adapter](const Adapter& entry) {
                return entry.name() == adapter.name();
            });
        if (known != entries_.end()) {
            *known = adapter;
        } else {
            entries_.push_back(adapter);
            list_.addItem(adapter.name());
        }
    }
    return !found.empty();
}

bool AdapterEntries::select(const std::string& name) {
    const std::vector<std::string>& items = list_.items();
    const auto item = std::find(items.begin(), items.end(), name);
    if (adapters_.named(name) == nullptr || item == items.end())
        return false;
    list_.setListIndex(static_cast<int>(item - items.begin()));
    return true;
}

const Adapter* AdapterEntries::find(const std::string& entry) const {
    const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const Adapter& adapter) {
        return adapter.name() == entry;
    });
    return found == entries_.end() ? nullptr : &*found;
}

const Adapter* AdapterEntries::chosen() const {
    return list_.enabled() && list_.listIndex() >= 0 ? find(list_.text()) : nullptr;
}

std::string AdapterEntries::missingPins(const Adapter& adapter,
                                        const std::vector<PinField>& fields) {
    std::vector<std::string> missing;
    for (const PinField& field : fields)
        if (!adapter.wiring.lineOf(pinNumber(field)))
            missing.push_back(fmt::format("pin {} ({})", field.field->text(), field.line));
    if (missing.empty())
        return {};
    return fmt::format("The adapter {} has no line for {}. It has one for the pins {}.",
                       adapter.name(), fmt::join(missing, ", "), adapter.wiring.pinsText());
}

} // namespace bitlux
