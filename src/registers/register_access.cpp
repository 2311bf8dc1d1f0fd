#include "registers/register_access.h"

#include "platform/failure.h"

#include <fmt/format.h>

namespace bitlux {

namespace {

Failure refused(const std::string& text) {
    return {Failure::Kind::OutOfRange, text};
}

} // namespace

std::uint64_t RegisterAccess::read(const RegisterItem& item) const {
    if (!item.readable())
        throw refused(fmt::format("{} cannot be read", item.name));
    const chips::WordFormat& format = catalog_.chip().word;
    const std::uint64_t word =
        format.word(item.view->operation, item.view->address, item.view->extra);
    std::uint64_t answer = exchange_(word);
    if (format.answersNext)
        answer = exchange_(format.fetch.value_or(word));
    return format.data.taken(answer) & item.mask();
}

void RegisterAccess::write(const RegisterItem& item, std::uint64_t value) const {
    if (!item.writable())
        throw refused(fmt::format("{} cannot be written", item.name));
    if ((value & ~item.mask()) != 0)
        throw refused(
            fmt::format("0x{:X} does not fit: {} has {} bits", value, item.name, item.width));
    const chips::Register& target = *item.owner;
    exchange_(catalog_.chip().word.word(chips::Operation::Write, target.address,
                                        (value & ~target.neverWritten) | target.alwaysWritten));
}

std::uint64_t RegisterAccess::changed(const RegisterItem& item,
                                      const std::vector<FieldChange>& changes, Base base) const {
    if (!item.writable())
        throw refused(fmt::format("{} cannot be written", item.name));
    std::uint64_t value = item.owner->reset;
    if (item.owner->access == chips::Access::WriteOneClears)
        value = 0;
    else if (base == Base::Chip && !item.readable())
        throw refused(
            fmt::format("{} cannot be read, so that its other fields are not known: start "
                        "from its reset value or give the whole value",
                        item.name));
    else if (base == Base::Chip)
        value = read(item);
    for (const auto& [name, text] : changes) {
        const NamedField& field = item.field(name, value);
        value = field.bits.replaced(value, field.codeFrom(text));
    }
    return value;
}

std::vector<RegisterAccess::Mismatch> RegisterAccess::verified(const RegisterItem& item,
                                                               std::uint64_t written) const {
    if (!item.readable() || item.clears() || item.owner->isVolatile)
        throw refused(item.name + " was written, and a read-back shows something else");
    const std::uint64_t now = read(item);
    if (differingBits(item, written, now) == 0)
        return {};
    return {{&item, written, now}};
}

RegisterSnapshot RegisterAccess::now(const RegisterSnapshot& wanted) const {
    RegisterSnapshot result{.chip = wanted.chip, .values = {}};
    for (const auto& [name, value] : wanted.values) {
        const RegisterItem& item = catalog_.item(name);
        result.values.push_back({name, item.readable() ? read(item) : value});
    }
    return result;
}

RegisterSnapshot RegisterAccess::dump(bool all) const {
    RegisterSnapshot snapshot{.chip = catalog_.chip().name, .values = {}};
    for (const RegisterItem& item : catalog_.items())
        if (item.readable() && (all || !item.clears()))
            snapshot.values.push_back({item.name, read(item)});
    return snapshot;
}

std::uint64_t RegisterAccess::differingBits(const RegisterItem& item, std::uint64_t written,
                                            std::uint64_t read) {
    const chips::Register& target = *item.owner;
    const bool isComparable = target.access == chips::Access::ReadWrite && !target.isVolatile;
    return isComparable ? (written ^ read) & item.mask() & ~target.neverWritten : 0;
}

RegisterAccess::Loaded RegisterAccess::load(const RegisterSnapshot& wanted, bool verify) const {
    Loaded result;
    for (const auto& [name, value] : wanted.values) {
        const RegisterItem& item = catalog_.item(name);
        if (!item.isRestorable())
            continue;
        if (item.readable() && differingBits(item, value, read(item)) == 0)
            continue;
        write(item, value);
        result.written.push_back(&item);
        if (verify && item.readable())
            for (const Mismatch& any : verified(item, value))
                result.mismatches.push_back(any);
    }
    return result;
}

} // namespace bitlux
