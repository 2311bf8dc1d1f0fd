#pragma once

#include "registers/assignment.h"
#include "registers/register_catalog.h"
#include "registers/register_snapshot.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace bitlux {

/// Reads and writes the registers of a chip by name.
class RegisterAccess {
public:
    /// Sends a word of the chip and returns the answer that came with it. Raises Failure
    /// (LinkFailed, PortUnusable) when there is none.
    using Exchange = std::function<std::uint64_t(std::uint64_t word)>;

    /// From what value fields are changed.
    enum class Base : std::uint8_t { Chip, Reset };

    /// A write that did not take.
    struct Mismatch {
        const RegisterItem* item = nullptr;
        std::uint64_t written = 0;
        std::uint64_t read = 0;
    };
    struct Loaded {
        std::vector<const RegisterItem*> written;
        std::vector<Mismatch> mismatches;
    };

    /// The catalog outlives it.
    RegisterAccess(const RegisterCatalog& catalog, Exchange exchange)
        : catalog_(catalog), exchange_(std::move(exchange)) {}

    [[nodiscard]] const RegisterCatalog& catalog() const { return catalog_; }

    /// One word, two where the chip answers with the next word. Raises Failure (OutOfRange) where
    /// no word reads the item.
    std::uint64_t read(const RegisterItem& item) const;
    /// Sends the value, with the bits that are always or never written. Raises Failure
    /// (OutOfRange) for an item that cannot be written and for a value that does not fit.
    void write(const RegisterItem& item, std::uint64_t value) const;
    /// What `changes` make of a value. Without one, bits that a one clears start as 0, so that
    /// only the named ones are cleared; all others start at `base`, which may read the register.
    [[nodiscard]] std::uint64_t changed(const RegisterItem& item,
                                        const std::vector<FieldChange>& changes,
                                        Base base = Base::Chip) const;

    /// Reads an item back that was written: one mismatch or none. Raises Failure (OutOfRange) for
    /// one whose read is impossible, would clear it, or shows something else.
    [[nodiscard]] std::vector<Mismatch> verified(const RegisterItem& item,
                                                 std::uint64_t written) const;
    /// What the chip has now of the values of a snapshot; those that cannot be read stay as they
    /// are.
    [[nodiscard]] RegisterSnapshot now(const RegisterSnapshot& wanted) const;
    /// Reads all that can be read. What a read would clear is left out unless `all`.
    [[nodiscard]] RegisterSnapshot dump(bool all = false) const;
    /// Writes the registers whose values differ in the chip, and those that cannot be read;
    /// volatile ones, and those that a read changes, are left out. `verify` reads each back that
    /// was written, as far as it can be read.
    Loaded load(const RegisterSnapshot& wanted, bool verify) const;
    /// The bits in which `read` differs from `written`, among those that a read returns.
    [[nodiscard]] static std::uint64_t differingBits(const RegisterItem& item,
                                                     std::uint64_t written, std::uint64_t read);

private:
    const RegisterCatalog& catalog_;
    Exchange exchange_;
};

} // namespace bitlux
