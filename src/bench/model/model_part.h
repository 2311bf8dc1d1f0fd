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

/// The peculiarities of a chip, for its model on the bench: written in C++, named in the chip's
/// file. A part is called for every event of the model and can change its effect; the defaults
/// change nothing.
class ModelPart {
public:
    virtual ~ModelPart() = default;

    // Time, and what is beside the bus

    virtual void timeIs(std::int64_t /*now*/) {}
    [[nodiscard]] virtual ChipLines lines() const { return {}; }
    virtual void addPhase(Phase&) const {}
    virtual void skip(std::int64_t /*duration*/) {}
    /// The service of the dongle for the chip; the part outlives it.
    virtual DongleServices dongleServices() { return {}; }

    // Words

    /// Without a supply, or in reset, the chip neither accepts a word nor answers.
    [[nodiscard]] virtual bool listens() const { return true; }
    /// Translates a word to the chip file's description, where the part gives bits another meaning.
    [[nodiscard]] virtual std::uint64_t understood(std::uint64_t word) const { return word; }
    /// A complete, known word; false when the chip does not execute it.
    virtual bool accepts(const Request&) { return true; }
    /// The value that a write stores in a register, given the default; nothing when it stores
    /// nothing.
    virtual std::optional<std::uint64_t> written(const chips::Register&, std::uint64_t value) {
        return value;
    }
    virtual void wasRead(const chips::View&) {}
    virtual void hadWrongLength() {}

    // Answers

    /// The status bits that the part computes, at their positions in an answer; called at the begin
    /// of a word.
    [[nodiscard]] virtual std::optional<std::uint64_t> status() const { return std::nullopt; }
    /// The value of a view, if the part computes it.
    [[nodiscard]] virtual std::optional<std::uint64_t> shown(const chips::View&) const {
        return std::nullopt;
    }
    /// The answer to a word, given the default. Bits of the word that were not received yet have
    /// the current level of the line.
    [[nodiscard]] virtual std::uint64_t answer(std::uint64_t /*word*/, std::uint64_t answer) const {
        return answer;
    }

    // The user

    virtual void addSwitches(SwitchTable&) {}
    virtual void turned(const StateBit&) {}
    [[nodiscard]] virtual std::vector<Reading> readings() const { return {}; }
};

/// A part by its name in files. `store` outlives it. Raises Failure (File) when there is no such
/// part, or when the chip lacks what the part needs.
std::unique_ptr<ModelPart> makeModelPart(std::string_view name, ModelStore& store);

} // namespace bitlux
