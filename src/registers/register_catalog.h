#pragma once

#include "chips/description.h"
#include "registers/named_field.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bitlux {

/// A value of a chip that has a name: a register, or a view with a value of its own, such as flags.
struct RegisterItem {
    std::string name; ///< unique in the chip
    const chips::Register* owner = nullptr;
    const chips::View* view = nullptr; ///< that reads it; null where no word reads it
    bool isRegister = true;            ///< else it is only read
    int width = 0;                     ///< bits
    std::vector<NamedField> fields;    ///< from the highest bit down

    [[nodiscard]] bool readable() const { return view != nullptr; }
    [[nodiscard]] bool writable() const { return isRegister && owner->writable(); }
    /// A read changes the chip.
    [[nodiscard]] bool clears() const { return view != nullptr && view->clears; }
    /// A snapshot may be written back to it.
    [[nodiscard]] bool isRestorable() const {
        return writable() && !clears() && !owner->isVolatile;
    }
    [[nodiscard]] bool readsHarmlessly() const { return readable() && !clears(); }
    [[nodiscard]] std::uint64_t mask() const;
    /// The value after a reset.
    [[nodiscard]] std::uint64_t reset() const;
    /// A value in hexadecimal with as many digits as the item needs, without "0x".
    [[nodiscard]] std::string hexOf(std::uint64_t value) const;
    [[nodiscard]] bool hasField(std::string_view wanted) const;
    /// A field by name, one that counts in `value` first. Raises Failure (OutOfRange) with similar
    /// names when there is none.
    [[nodiscard]] const NamedField& field(std::string_view wanted, std::uint64_t value) const;
    /// "FIELD = TEXT" for each field that counts, single bits without texts only where they are
    /// set; separated by commas.
    [[nodiscard]] std::string summaryOf(std::uint64_t value) const;
};

/// All values of a chip by name, in the order of its file.
class RegisterCatalog {
public:
    explicit RegisterCatalog(chips::ChipPtr chip);

    [[nodiscard]] const chips::Chip& chip() const { return *chip_; }
    [[nodiscard]] const std::vector<RegisterItem>& items() const { return items_; }
    [[nodiscard]] std::vector<std::string> names() const;
    /// An item by its name, or a view by the name of its row of labels, without
    /// regard to case, blanks and underscores. Raises Failure (OutOfRange) with similar names when
    /// there is none.
    [[nodiscard]] const RegisterItem& item(std::string_view wanted) const;
    /// The same; null when there is none.
    [[nodiscard]] const RegisterItem* find(std::string_view wanted) const;

private:
    void addRegister(const chips::Register& added);
    void addView(const chips::Register& owner, const chips::View& view);
    [[nodiscard]] bool isRead(const chips::View& view) const;
    [[nodiscard]] std::string freeNameFor(const chips::Register& owner,
                                          const chips::View& view) const;
    [[nodiscard]] bool isTaken(const std::string& name, const chips::Register& owner,
                               bool isAlone) const;

    chips::ChipPtr chip_;
    std::vector<RegisterItem> items_;
};

} // namespace bitlux
