#include "chips/description.h"

#include <algorithm>
#include <bit>

#include <fmt/format.h>

namespace bitlux::chips {

std::string text(const ControlName& name) {
    return name.index < 0 ? name.name : fmt::format("{}({})", name.name, name.index);
}

std::uint64_t WordCheck::sealed(std::uint64_t word) const {
    if (!exists() || place.empty())
        return word;
    const std::uint64_t data = over.taken(word);
    if (kind != Kind::Crc) {
        const bool odd = std::popcount(data) % 2 != 0;
        return place.replaced(word, odd == (kind == Kind::EvenParity) ? 1 : 0);
    }
    const std::uint64_t top = std::uint64_t{1} << (place.size() - 1);
    std::uint64_t crc = start;
    for (int bit = over.size() - 1; bit >= 0; --bit) {
        const bool feeds = ((crc & top) != 0) != ((data >> bit & 1) != 0);
        crc = (crc << 1 & place.largest()) ^ (feeds ? polynomial : 0);
    }
    return place.replaced(word, crc ^ invert);
}

std::uint64_t WordFormat::constant(Operation operation) const {
    if (operation == Operation::Write)
        return write;
    return operation == Operation::Flags ? flags.value_or(read) : read;
}

std::uint64_t WordFormat::word(Operation operation, std::uint64_t where,
                               std::uint64_t value) const {
    return check.sealed(constant(operation) | address.placed(where) | data.placed(value));
}

std::optional<Operation> WordFormat::operationOf(std::uint64_t word) const {
    const std::uint64_t operationBits =
        mask() & ~(address.mask() | data.mask() | (check.exists() ? check.place.mask() : 0));
    for (const Operation operation : {Operation::Write, Operation::Read, Operation::Flags})
        if ((operation != Operation::Flags || flags) &&
            (word & operationBits) == constant(operation))
            return operation;
    return std::nullopt;
}

int AutomaticReads::last() const {
    int last = static_cast<int>(buttons.size()) - 1;
    for (const std::vector<int>* boxes : {&switches, &recorders})
        for (const int box : *boxes)
            last = std::max(last, box);
    for (const Group& group : groups)
        last = std::max(last, group.box);
    return last;
}

const View* Register::find(std::string_view wanted) const {
    const auto found = std::find_if(views.begin(), views.end(),
                                    [wanted](const auto& any) { return any.title == wanted; });
    return found == views.end() ? nullptr : &*found;
}

bool Register::isAbovePages() const {
    return !writable() && !views.empty() &&
           std::all_of(views.begin(), views.end(),
                       [](const View& view) { return view.page == statusPage; });
}

std::vector<std::string> Chip::registerPages() const {
    std::vector<std::pair<int, std::string>> named; // by their line names
    for (const Register& any : registers)
        if (any.row.form.empty() && !any.isAbovePages())
            named.emplace_back(any.at.line, any.page);
    for (const Command& any : commands)
        if (any.page != statusPage && any.form.empty())
            named.emplace_back(any.at.line, any.page);
    std::stable_sort(named.begin(), named.end(),
                     [](const auto& one, const auto& other) { return one.first < other.first; });
    std::vector<std::string> titles;
    for (const auto& [line, page] : named)
        if (std::find(titles.begin(), titles.end(), page) == titles.end())
            titles.push_back(page);
    return titles;
}

const View* viewOf(const Chip& chip, const ReadAll& group, const ReadAll::Step& step) {
    for (const Register& any : chip.registers)
        for (const View& view : any.views)
            if (step.row.exists() && view.row.form == group.form &&
                view.row.first.name == step.row.name &&
                view.row.first.index == std::max(step.row.index, 0))
                return &view;
    return nullptr;
}

FlagBits flagsShownBy(const Chip& chip, const ControlRange& labels) {
    for (const Register& any : chip.registers)
        for (const View& view : any.views) {
            const ControlName& label = view.row.first;
            const int first = labels.first < 0 ? 0 : labels.first - label.index;
            const int last = labels.first < 0 ? view.row.width() - 1 : labels.last - label.index;
            if ((view.ownValue() || !any.writable()) && view.row.form.empty() &&
                label.name == labels.name && first >= 0 && last < view.row.width())
                return {&any, &view, BitList::range(first, last - first + 1).mask()};
        }
    return {};
}

const Companion* PanelLayout::findDescribed(std::string_view name) const {
    const auto found = std::find_if(described.begin(), described.end(),
                                    [name](const auto& any) { return any.form == name; });
    return found == described.end() ? nullptr : &*found;
}

const Register* Chip::find(std::string_view wanted) const {
    const auto found = std::find_if(registers.begin(), registers.end(),
                                    [wanted](const auto& any) { return any.title == wanted; });
    return found == registers.end() ? nullptr : &*found;
}

const Sheet* Chip::sheetOf(std::string_view form) const {
    const auto found = std::find_if(sheets.begin(), sheets.end(),
                                    [form](const Sheet& any) { return any.form == form; });
    return found == sheets.end() ? nullptr : &*found;
}

std::vector<std::string> Variants::captionsOn(std::string_view variant, const Row& row) const {
    std::vector<std::string> all = row.captions;
    if (variant.empty())
        return all;
    const auto labelOf = [&](const Caption& any) -> std::string* {
        const int place = any.label.index - row.first.index;
        const bool inRow = any.label.name == row.first.name && place >= 0 && place < row.width();
        return inRow ? &all[static_cast<std::size_t>(place)] : nullptr;
    };
    for (const Caption& any : captions)
        if (std::string* label = labelOf(any))
            *label = otherwise;
    for (const Caption& any : captions)
        if (std::string* label = labelOf(any);
            label != nullptr && std::find(any.on.begin(), any.on.end(), variant) != any.on.end())
            *label = any.text;
    return all;
}

const Device* Chip::findDevice(std::string_view wanted) const {
    const auto found = std::find_if(devices.begin(), devices.end(),
                                    [wanted](const auto& any) { return any.name == wanted; });
    return found == devices.end() ? nullptr : &*found;
}

} // namespace bitlux::chips
