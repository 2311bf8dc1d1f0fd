#pragma once

#include "session/session.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace bitlux {

/// The words of Quick Commands that Apply has emptied, until they are restored or discarded. Words
/// saved under other names meanwhile are added to them by the next Apply.
class EmptiedCommands {
public:
    explicit EmptiedCommands(Session& session) : session_(session) {}

    /// Empties the table for words of the session's length and keeps its words. A table without
    /// words leaves the words kept before; one of another word length replaces them.
    void empty();
    /// Discards the words of one name, or all.
    void forget(std::string_view name);
    void forget();
    /// The names in the table have changed: count() counts again.
    void recount() { missing_.reset(); }

    /// Number of names without a word that restore() would give one; 0 while the word length
    /// differs from that of the kept words.
    [[nodiscard]] std::size_t count() const;
    [[nodiscard]] bool has(std::string_view name) const;
    /// Puts the words into the table, before those added later; a word saved under the same name
    /// meanwhile stays. `count` is above 0.
    void restore();

private:
    [[nodiscard]] std::size_t countMissing() const;

    Session& session_;
    QuickCommandTable kept_;
    /// The names of kept_ that the table does not have, counted when they are asked for: Apply
    /// takes no longer for a large table.
    mutable std::optional<std::size_t> missing_;
};

} // namespace bitlux
