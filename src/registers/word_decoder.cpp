#include "registers/word_decoder.h"

#include <bit>

namespace bitlux {

namespace {

using chips::Operation;

} // namespace

std::string DecodedWord::title() const {
    switch (kind) {
    case Kind::Write:
        return item->name + " write";
    case Kind::Read:
        return item->name + " read";
    case Kind::Command:
        return command->group.empty() ? command->title : command->group + ": " + command->title;
    case Kind::Unknown:
        break;
    }
    return {};
}

std::string DecodedWord::text() const {
    if (kind != Kind::Write)
        return title();
    const std::string fields = item->summaryOf(value);
    return title() + (fields.empty() ? " 0x" + item->hexOf(value) : ": " + fields);
}

WordDecoder::WordDecoder(const RegisterCatalog& catalog) : catalog_(catalog) {
    const chips::Chip& chip = catalog.chip();
    for (const chips::Command& any : chip.commands)
        if (any.word)
            exact_.emplace(*any.word,
                           DecodedWord{.kind = DecodedWord::Kind::Command, .command = &any});
    for (const RegisterItem& any : catalog.items()) {
        if (any.writable())
            written_.emplace(any.owner->address, &any);
        if (!any.readable())
            continue;
        const chips::View& view = *any.view;
        exact_.emplace(chip.word.word(view.operation, view.address, view.extra),
                       DecodedWord{.kind = DecodedWord::Kind::Read, .item = &any});
        if (view.operation == Operation::Read)
            read_.emplace(view.address, &any);
    }
}

DecodedWord WordDecoder::decode(std::uint64_t word) const {
    if (const auto found = exact_.find(word); found != exact_.end())
        return found->second;
    const chips::WordFormat& format = catalog_.chip().word;
    const std::optional<Operation> operation = format.operationOf(word);
    if (!operation || *operation == Operation::Flags)
        return {};
    const std::uint64_t address = format.address.taken(word);
    const std::uint64_t data = format.data.taken(word);
    if (*operation == Operation::Write)
        if (const RegisterItem* item = writtenBy(address, data))
            return {.kind = DecodedWord::Kind::Write, .item = item, .value = data & item->mask()};
    const auto found = read_.find(address);
    if (format.constant(Operation::Read) == format.constant(*operation) && found != read_.end())
        return {.kind = DecodedWord::Kind::Read, .item = found->second};
    return {};
}

/// Registers of one address are distinguished by the bits that are always or never written.
const RegisterItem* WordDecoder::writtenBy(std::uint64_t address, std::uint64_t data) const {
    const RegisterItem* best = nullptr;
    int most = -1;
    const auto [first, last] = written_.equal_range(address);
    for (auto at = first; at != last; ++at) {
        const chips::Register& owner = *at->second->owner;
        const std::uint64_t beyond = ~(at->second->mask() | owner.alwaysWritten);
        if ((data & owner.alwaysWritten) != owner.alwaysWritten || (data & beyond) != 0)
            continue;
        const int fixed = std::popcount(owner.alwaysWritten);
        if (fixed > most) {
            most = fixed;
            best = at->second;
        }
    }
    return best;
}

std::optional<std::uint64_t> WordDecoder::valueIn(const DecodedWord& request,
                                                  std::uint64_t answer) const {
    if (request.kind != DecodedWord::Kind::Read)
        return std::nullopt;
    return catalog_.chip().word.data.taken(answer) & request.item->mask();
}

std::string WordDecoder::statusIn(const DecodedWord& request, std::uint64_t answer) const {
    const chips::WordFormat& format = catalog_.chip().word;
    const bool isRead = request.kind == DecodedWord::Kind::Read;
    std::string text;
    for (int place = format.status.width() - 1; place >= 0; --place) {
        const int bit = format.statusFirst + place;
        const std::string& caption = format.status.captions[static_cast<std::size_t>(place)];
        const bool counts = caption != "-" && (!isRead || format.statusOfRead.has(bit));
        if (counts && (answer >> bit & 1) != 0)
            text += (text.empty() ? "" : ", ") + caption;
    }
    return text;
}

std::string WordDecoder::answerText(const DecodedWord& request, std::uint64_t answer) const {
    std::string text;
    if (const std::optional<std::uint64_t> value = valueIn(request, answer)) {
        text = request.item->summaryOf(*value);
        if (text.empty())
            text = "0x" + request.item->hexOf(*value);
    }
    const std::string status = statusIn(request, answer);
    if (!status.empty())
        text += (text.empty() ? "status: " : "; status: ") + status;
    return text;
}

} // namespace bitlux
