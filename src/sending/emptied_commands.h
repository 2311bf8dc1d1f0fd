#pragma once

#include "session/session.h"

#include <cstddef>
#include <string_view>

namespace bitlux {

/// The words of Quick Commands that Apply has emptied, until they are put back or given up. Words
/// that come by other names meanwhile are kept with them by the next Apply.
class EmptiedCommands {
public:
    explicit EmptiedCommands(Session& session) : session_(session) {}

    /// Empties the table for words of the session's length and keeps what it held. A table without
    /// words leaves what was kept before; one of another word length replaces it.
    void empty();
    /// They are wanted no more; of a name alone, or all.
    void forget(std::string_view name);
    void forget();
    /// The names in the table are others than before.
    void recount();

    /// Names that have no word and would have one after restore(); 0 while words have another
    /// length than those that were kept.
    [[nodiscard]] std::size_t count() const;
    [[nodiscard]] bool has(std::string_view name) const;
    /// Puts the words into the table, in front of those that came later; one that has been given to
    /// the same name meanwhile stays. `count` is above 0.
    void restore();

private:
    Session& session_;
    QuickCommandTable kept_;
    std::size_t missing_ = 0; ///< names of kept_ that the table does not have
};

} // namespace bitlux
