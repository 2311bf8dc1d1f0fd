#pragma once

#include "chips/description.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace bitlux::chips {

/// Names of controls that every panel has, so that no title may lead to them.
std::vector<std::string> controlsOfEveryPanel();

/// The controls that a description makes, including those of its sequence. Two with the same name
/// are a problem, unless they are rows that registers share.
class ControlCensus {
public:
    enum class Kind : std::uint8_t { Label, Button, Option, Box, Other };

    /// Adds its findings to `problems`.
    ControlCensus(const Chip& chip, Problems& problems);

    /// Null when there is none of this name on the panel, or on a companion form.
    [[nodiscard]] std::optional<Kind> kindOf(const ControlName& name,
                                             const std::string& form = {}) const;
    /// Whether one of the elements `first` to `last` exists; any index when they are -1.
    [[nodiscard]] bool hasAny(const std::string& name, int first, int last) const;
    /// Advice for an unknown name.
    [[nodiscard]] std::string nearText(const ControlName& name) const;

private:
    struct Taken {
        Kind kind;
        Place at;
    };
    struct Name {
        std::string spelling;
        bool isArray = false;
        Place at;
    };
    using Key = std::tuple<std::string, std::string, int>; ///< form, name, index

    void addSequence(const Chip& chip);
    void add(const ControlName& name, Kind kind, const Place& at, const std::string& form = {});
    void addRow(const Row& row, const Place& at);
    void addOwn(const OwnControl& any);
    void addStops(const Place& at);
    void addRegister(const Register& any);
    void addField(const Field& field, const std::string& form);
    void reportDuplicate(const ControlName& name, const Place& at, const Name& before);

    std::map<Key, Taken> taken_;
    /// By form and lower-case name, which handlers use.
    std::map<std::pair<std::string, std::string>, Name> names_;
    std::set<std::pair<std::string, int>> reported_; ///< names and lines
    std::map<Key, int> rows_;                        ///< widths, by their first labels
    Problems& problems_;
    mutable int asked_ = 0; ///< limits the searches for near names, which take time
};

} // namespace bitlux::chips
