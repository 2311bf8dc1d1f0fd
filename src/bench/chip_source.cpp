#include "bench/chip_source.h"

#include "chips/chip_library.h"
#include "chips/embedded_chips.h"

#include <algorithm>

namespace bitlux {

namespace {

class EmbeddedChipSource : public ChipSource {
public:
    [[nodiscard]] std::vector<Entry> entries() const override {
        std::vector<Entry> all;
        for (const chips::EmbeddedChip& chip : chips::embeddedChips())
            for (const auto& device : chip.devices)
                all.push_back({std::string(device.name), std::string(device.description)});
        return all;
    }
    [[nodiscard]] chips::ChipPtr chipOf(std::string_view device) const override {
        for (const chips::EmbeddedChip& chip : chips::embeddedChips())
            if (std::any_of(chip.devices.begin(), chip.devices.end(),
                            [device](const auto& any) { return any.name == device; }))
                return chips::embeddedChip(chip.name);
        return nullptr;
    }
};

} // namespace

const ChipSource& embeddedChipSource() {
    static const EmbeddedChipSource source;
    return source;
}

} // namespace bitlux
