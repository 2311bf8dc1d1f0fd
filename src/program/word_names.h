#pragma once

#include "chips/chip_library.h"
#include "platform/event.h"
#include "platform/forms/form_set.h"
#include "program/main_tabs.h"
#include "registers/word_decoder.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace bitlux {

/// The chip whose names explain the words: the one that the user picked, else the one that the
/// user works with. That is the one whose tab is selected, else whose panel was shown last, else
/// the only one that has a tab. No file is read before decoder() is called.
class WordNames {
public:
    /// All outlive it.
    struct Parts {
        chips::ChipLibrary& library;
        forms::FormSet& forms;
        std::function<const MainTabs&()> tabs;
    };

    explicit WordNames(const Parts& parts);

    /// Empty for the chip that the user works with.
    void pick(const std::string& chip);
    [[nodiscard]] const std::string& picked() const { return picked_; }
    /// The chips that can be picked.
    [[nodiscard]] std::vector<std::string> choices() const { return parts_.library.names(); }
    /// The chip that the user works with; empty for none.
    [[nodiscard]] std::string current() const;
    /// The chip that counts; empty for none.
    [[nodiscard]] std::string chip() const { return picked_.empty() ? current() : picked_; }
    /// Of that chip; null for none, and when its file is damaged.
    std::shared_ptr<const WordDecoder> decoder();
    /// What is wrong with the file; empty for nothing.
    [[nodiscard]] const std::string& problem() const { return problem_; }

    Event<> changed; ///< another one was picked

private:
    struct Known {
        explicit Known(chips::ChipPtr chip) : catalog(std::move(chip)), decoder(catalog) {}
        RegisterCatalog catalog;
        WordDecoder decoder;
    };

    void noteForm(const forms::Form& form, bool isShown);

    Parts parts_;
    std::string picked_;
    std::vector<std::string> panels_; ///< chips whose panels are shown, the last one last
    std::string read_;                ///< whose names are known, or whose file is damaged
    std::shared_ptr<const Known> known_;
    std::string problem_;
};

} // namespace bitlux
