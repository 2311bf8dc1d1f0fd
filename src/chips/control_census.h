#pragma once

#include "chips/description.h"

#include <map>
#include <string>
#include <tuple>

namespace bitlux::chips {

/// The controls that a description makes. Two of one name are a problem; rows that registers share
/// are not.
class ControlCensus {
public:
    /// Adds what it finds to `problems`.
    ControlCensus(const Chip& chip, Problems& problems);

    /// On a companion form, or on the panel when `form` is empty.
    [[nodiscard]] bool has(const ControlName& name, const std::string& form = {}) const {
        return taken_.find({form, name.name, name.index}) != taken_.end();
    }
    /// Advice for a name that there is none of.
    [[nodiscard]] std::string nearText(const ControlName& name) const;

private:
    using Key = std::tuple<std::string, std::string, int>; ///< form, name, index

    void add(const ControlName& name, const Place& at, const std::string& form = {});
    void addRow(const Row& row, const Place& at);
    void addRegister(const Register& any);
    void addField(const Field& field, const std::string& form);

    std::map<Key, Place> taken_;
    std::map<Key, int> rows_; ///< widths, by their first labels
    Problems& problems_;
};

} // namespace bitlux::chips
