#include "bench/zt72518/switch_table.h"

#include "chips/zt72518/registers.h"

namespace bitlux::zt72518 {

namespace {

constexpr std::array<std::string_view, 8> pins{"RST",   "INT",   "SAFE",  "Debug",
                                               "I/O 0", "I/O 1", "I/O 2", "I/O 3"};
constexpr std::array<std::string_view, 4> faults{"Silent", "Output stuck high", "Flags stay",
                                                 "No watchdog"};

std::string trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

void add(SwitchTable& table, Row row, std::string_view group, oldchips::BitCaptions captions) {
    for (std::size_t bit = 0; bit < captions.size(); ++bit) {
        if (captions[bit] == "-")
            continue;
        table.switches.push_back({trimmed(group), trimmed(captions[bit])});
        table.bits.push_back({row, static_cast<int>(bit)});
    }
}

SwitchTable makeTable() {
    SwitchTable table;
    add(table, Pins, "Pins", pins);
    for (std::size_t row = 0; row < flagRowCount; ++row)
        add(table, static_cast<Row>(row), flagRow(row).title, flagRow(row).captions);
    add(table, Identity, "Identity", oldchips::zt72518::registers[Interrupts].high.captions);
    add(table, Faults, "Faults", faults);
    return table;
}

} // namespace

const SwitchTable& switchTable() {
    static const SwitchTable table = makeTable();
    return table;
}

} // namespace bitlux::zt72518
