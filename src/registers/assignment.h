#pragma once

#include "registers/register_catalog.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace bitlux {

/// "FIELD=VALUE" as text, apart.
using FieldChange = std::pair<std::string, std::string>;

/// What the fields of a register are to be, or the whole register.
struct Assignment {
    const RegisterItem* item = nullptr;
    std::vector<FieldChange> fields;
    std::optional<std::uint64_t> whole;

    /// What of it does not hold in `value`, as "STATE = Init, not Normal"; empty when all holds.
    /// Raises Failure for a field or value that the register does not have.
    [[nodiscard]] std::string unmetIn(std::uint64_t value) const;
};

/// Adds "REGISTER.FIELD=VALUE" or "REGISTER=NUMBER" to the assignments, one for each register; with
/// `usual` also "FIELD=VALUE" of that register. Titles may contain points and equals signs: the
/// first division that gives names of the chip counts. Raises Failure: OutOfRange, with similar
/// names, for names that do not exist, Conversion for any other text.
void addAssignment(const RegisterCatalog& catalog, std::string_view text,
                   std::vector<Assignment>& assignments, const RegisterItem* usual = nullptr);

/// The assignment of a register; it is added when there is none.
Assignment& assignmentOf(std::vector<Assignment>& assignments, const RegisterItem& item);

} // namespace bitlux
