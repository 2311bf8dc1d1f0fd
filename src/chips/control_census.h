#pragma once

#include "chips/description.h"

#include <map>
#include <string>
#include <utility>

namespace bitlux::chips {

/// The controls that a description makes. Two of one name are a problem; rows that registers share
/// are not.
class ControlCensus {
public:
    /// Adds what it finds to `problems`.
    ControlCensus(const Chip& chip, Problems& problems);

    [[nodiscard]] bool has(const ControlName& name) const {
        return taken_.find({name.name, name.index}) != taken_.end();
    }
    /// Advice for a name that there is none of.
    [[nodiscard]] std::string nearText(const ControlName& name) const;

private:
    void add(const ControlName& name, const Place& at);
    void addRow(const Row& row, const Place& at);
    void addRegister(const Register& any);
    void addField(const Field& field);

    std::map<std::pair<std::string, int>, Place> taken_;
    std::map<std::pair<std::string, int>, int> rows_; ///< widths, by their first labels
    Problems& problems_;
};

} // namespace bitlux::chips
