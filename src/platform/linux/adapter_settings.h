#pragma once

#include "platform/adapter.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bitlux {

/// What a user wants of one adapter.
struct AdapterWishes {
    std::optional<AdapterWiring> wiring;
    int channel = 0; ///< of the chip; 0 is A
    std::optional<int> clock;
    bool keepsLines = false;
    std::string
        problem{}; ///< the first of its section; the others of these are not to be used then
};

/// The files adapters.conf: TOML with a table for each adapter, by its serial number or, where it
/// has none, by its place.
class AdapterSettings {
public:
    /// Reads the files in their order; one that does not exist counts as empty. The table of a
    /// later file replaces that of an earlier one.
    explicit AdapterSettings(const std::vector<std::string>& fileNames);

    /// The files of this machine: the system's, then the user's.
    static std::vector<std::string> files();

    /// For the adapter with this serial number or at this place. In a file that cannot be read,
    /// each adapter has a problem.
    [[nodiscard]] AdapterWishes of(std::string_view name) const;
    /// How many tables there are.
    [[nodiscard]] std::size_t count() const { return sections_.size(); }
    /// What is wrong, a sentence each with file, line and column.
    [[nodiscard]] const std::vector<std::string>& problems() const { return problems_; }

private:
    struct Section {
        std::string name;
        AdapterWishes wishes;
    };

    void read(const std::string& fileName);

    std::vector<Section> sections_;
    std::string unread_; ///< the problem of a file that cannot be read
    std::vector<std::string> problems_;
};

} // namespace bitlux
