#pragma once

#include "bench/chip.h"
#include "bench/dongle_service.h"
#include "bench/model/model_store.h"
#include "bench/model/request_map.h"
#include "bench/model/switch_table.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace bitlux {

/// What is odd about a chip, for its model on the bench: written in C++, named in the chip's file.
/// It sees all that happens to the model and changes what it has to; at first it changes nothing.
class ModelPart {
public:
    virtual ~ModelPart() = default;

    // Time, and what is beside the bus

    virtual void timeIs(std::int64_t /*now*/) {}
    [[nodiscard]] virtual ChipLines lines() const { return {}; }
    virtual void addPhase(Phase&) const {}
    virtual void skip(std::int64_t /*duration*/) {}
    /// What a dongle does for the chip; the part outlives it.
    virtual DongleServices dongleServices() { return {}; }

    // Words

    /// Without a supply, or in reset, the chip neither takes a word nor answers.
    [[nodiscard]] virtual bool listens() const { return true; }
    /// The word as the chip's file describes it, where bits mean something else to the part.
    [[nodiscard]] virtual std::uint64_t understood(std::uint64_t word) const { return word; }
    /// A whole word that the chip knows; false when the chip does not carry it out.
    virtual bool accepts(const Request&) { return true; }
    /// What a write leaves in a register, from what it would leave; nothing when it stores nothing.
    virtual std::optional<std::uint64_t> written(const chips::Register&, std::uint64_t value) {
        return value;
    }
    virtual void wasRead(const chips::View&) {}
    virtual void hadWrongLength() {}

    // Answers

    /// Status bits, in their places in an answer, where the part makes them; asked as a word
    /// begins.
    [[nodiscard]] virtual std::optional<std::uint64_t> status() const { return std::nullopt; }
    /// What a view shows, where the part makes it.
    [[nodiscard]] virtual std::optional<std::uint64_t> shown(const chips::View&) const {
        return std::nullopt;
    }
    /// The answer to a word, from what it would be. Bits of the word that are yet to come stand as
    /// the line does now.
    [[nodiscard]] virtual std::uint64_t answer(std::uint64_t /*word*/, std::uint64_t answer) const {
        return answer;
    }

    // The user

    virtual void addSwitches(SwitchTable&) {}
    virtual void turned(const StateBit&) {}
    [[nodiscard]] virtual std::vector<Reading> readings() const { return {}; }
};

/// A part by its name in files. `store` outlives it. Raises Failure (File) when there is none of
/// the name, or when the chip lacks what the part needs.
std::unique_ptr<ModelPart> makeModelPart(std::string_view name, ModelStore& store);

} // namespace bitlux
