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
            for (const std::string_view device : chip.devices)
                all.push_back({std::string(device), std::string(chip.description)});
        return all;
    }
    [[nodiscard]] chips::ChipPtr chipOf(std::string_view device) const override {
        for (const chips::EmbeddedChip& chip : chips::embeddedChips())
            if (std::find(chip.devices.begin(), chip.devices.end(), device) != chip.devices.end())
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
