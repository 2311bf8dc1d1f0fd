#pragma once

#include "chips/problem.h"
#include "mapimport/fitted_chip.h"
#include "mapimport/source_map.h"
#include "mapimport/titles.h"

#include <cstddef>
#include <vector>

namespace bitlux::mapimport {

inline constexpr std::size_t longestNote = 1000; ///< bytes

/// Makes the fields of a register: reserved ones and those beyond the register are left out.
class FieldFitter {
public:
    /// Both outlive it.
    FieldFitter(TitleBook& titles, chips::Problems& notes) : titles_(titles), notes_(notes) {}

    /// The fields of `source` for a register that has a title, a width and its access.
    std::vector<FittedField> fit(const MapRegister& source, const FittedRegister& owner);

    /// Reserved fields that were left out.
    [[nodiscard]] std::size_t reserved() const { return reserved_; }
    [[nodiscard]] const chips::Place& firstReserved() const { return firstReserved_; }

private:
    FittedField fitted(const MapField& source, const FittedRegister& owner);
    std::string noteOf(const MapField& source, const FittedRegister& owner);
    void note(const chips::Place& at, std::string text, std::string advice);

    TitleBook& titles_;
    chips::Problems& notes_;
    std::size_t reserved_ = 0;
    chips::Place firstReserved_;
};

/// Whether a field says of itself that it means nothing.
bool isReserved(const MapField& field);

} // namespace bitlux::mapimport
