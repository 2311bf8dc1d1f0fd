#include "bench/model/model_store.h"

#include "platform/failure.h"

#include <map>
#include <tuple>
#include <utility>

#include <fmt/format.h>

namespace bitlux {

namespace {

[[noreturn]] void refuse(const chips::Chip& chip, std::string_view missing) {
    throw Failure(Failure::Kind::File,
                  fmt::format("{}: the model of this chip needs {}", chip.file, missing));
}

} // namespace

ModelStore::ModelStore(chips::ChipPtr chip, std::string_view device)
    : chip_(std::move(chip)), device_(chip_->findDevice(device)) {
    if (device_ == nullptr)
        throw Failure(Failure::Kind::OutOfRange,
                      fmt::format("{} has no device \"{}\"", chip_->title, device));
    for (const chips::Register& any : chip_->registers)
        values_.push_back(any.reset);
    // The same request may occur twice, when a companion form shows a view again.
    std::map<std::tuple<chips::Operation, std::uint64_t, std::uint64_t>, std::size_t> known;
    for (std::size_t i = 0; i < chip_->registers.size(); ++i) {
        std::vector<std::size_t>& places = viewsAt_.emplace_back();
        for (const chips::View& view : chip_->registers[i].views) {
            const auto [place, isNew] =
                known.emplace(std::tuple(view.operation, view.address, view.extra),
                              view.ownValue() ? values_.size() : i);
            if (isNew && view.ownValue())
                values_.push_back(view.reset.value_or(0));
            places.push_back(place->second);
        }
    }
    reset();
    findSums();
}

void ModelStore::findSums() {
    for (const chips::StatusSum& sum : chip_->word.sums)
        for (const chips::ControlRange& labels : sum.of) {
            const chips::FlagBits flags = chips::flagsShownBy(*chip_, labels);
            sums_.push_back({.bit = std::uint64_t{1} << sum.bit,
                             .place = placeOf(*flags.owner, *flags.view),
                             .flags = flags.bits});
        }
}

std::uint64_t ModelStore::summary() const {
    std::uint64_t all = status;
    for (const Sum& sum : sums_)
        if ((values_[sum.place] & sum.flags) != 0)
            all |= sum.bit;
    return all;
}

void ModelStore::resetWritten() {
    for (const chips::Register& any : chip_->registers)
        if (any.writable())
            of(any) = any.reset;
    for (const chips::Device::Reset& any : device_->resets)
        if (any.view.empty() && owner(any.owner).writable())
            of(owner(any.owner)) = any.value;
}

void ModelStore::reset() {
    for (const chips::Device::Reset& any : device_->resets)
        (any.view.empty() ? of(owner(any.owner))
                          : of(owner(any.owner), view(any.owner, any.view))) = any.value;
}

std::size_t ModelStore::indexOf(const chips::Register& owner) const {
    return static_cast<std::size_t>(&owner - chip_->registers.data());
}

std::uint64_t ModelStore::summaryOf(const StateBit& flag) const {
    std::uint64_t all = 0;
    for (const Sum& sum : sums_)
        if (&values_[sum.place] == flag.word && (sum.flags >> flag.bit & 1) != 0)
            all |= sum.bit;
    return all;
}

std::uint64_t& ModelStore::flags(const std::string& row) {
    const chips::FlagBits found = chips::flagsShownBy(*chip_, {.name = row});
    if (found.view == nullptr)
        refuse(*chip_, fmt::format("flags in the row {}", row));
    return of(*found.owner, *found.view);
}

std::uint64_t& ModelStore::of(const chips::Register& owner) {
    return values_.at(indexOf(owner));
}

std::uint64_t ModelStore::of(const chips::Register& owner) const {
    return values_.at(indexOf(owner));
}

std::size_t ModelStore::placeOf(const chips::Register& owner, const chips::View& view) const {
    return viewsAt_.at(indexOf(owner)).at(static_cast<std::size_t>(&view - owner.views.data()));
}

std::uint64_t& ModelStore::of(const chips::Register& owner, const chips::View& view) {
    return values_.at(placeOf(owner, view));
}

const chips::Register& ModelStore::owner(std::string_view title) const {
    const chips::Register* found = chip_->find(title);
    if (found == nullptr)
        refuse(*chip_, fmt::format("the register \"{}\"", title));
    return *found;
}

const chips::View& ModelStore::view(std::string_view ownerTitle, std::string_view title) const {
    const chips::View* found = owner(ownerTitle).find(title);
    if (found == nullptr)
        refuse(*chip_, fmt::format(R"(the view "{}" of "{}")", title, ownerTitle));
    return *found;
}

void ModelStore::addPhase(Phase& phase) const {
    for (const std::uint64_t value : values_)
        phase.push_back(static_cast<std::int64_t>(value));
    phase.push_back(static_cast<std::int64_t>(status));
}

} // namespace bitlux
