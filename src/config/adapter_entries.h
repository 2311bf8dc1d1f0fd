#pragma once

#include "config/pin_field.h"
#include "platform/forms/controls.h"
#include "transfer/adapter_bus.h"

#include <optional>
#include <string>
#include <vector>

namespace bitlux {

/// The adapters in the dialog's list of ports, after the parallel ports.
class AdapterEntries {
public:
    /// Both outlive this.
    AdapterEntries(AdapterBus& adapters, forms::ComboBox& list)
        : adapters_(adapters), list_(list) {}

    /// Looks for adapters and adds those that the list does not have. Whether there is one.
    bool addFound();
    /// Selects an adapter by its name. False when the last search has not found it.
    bool select(const std::string& name);
    /// Whether the entry of a text is an adapter.
    [[nodiscard]] bool has(const std::string& entry) const { return find(entry) != nullptr; }
    /// The selected adapter, which may be unplugged by now; null when something else is selected,
    /// or the list does not count.
    [[nodiscard]] const Adapter* chosen() const;
    /// Which of the fields have a pin that the adapter does not have: a sentence, empty when all
    /// have one.
    [[nodiscard]] static std::string missingPins(const Adapter& adapter,
                                                 const std::vector<PinField>& fields);

    /// The adapter that the last configuration file named; empty for none.
    std::string namedByFile;
    /// The adapter that is used whatever adapter or address of a port a configuration file names;
    /// when it is empty, no adapter is used.
    std::optional<std::string> insteadOfFiles;

private:
    [[nodiscard]] const Adapter* find(const std::string& entry) const;

    std::vector<Adapter> entries_;
    AdapterBus& adapters_;
    forms::ComboBox& list_;
};

} // namespace bitlux
