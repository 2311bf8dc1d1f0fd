#pragma once

#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "sending/run_controls.h"
#include "session/session.h"
#include "transfer/pin_layer.h"
#include "transfer/word_engine.h"

#include <cstdint>
#include <functional>
#include <string>

namespace bitlux {

/// The word length and type that were applied last, compared with those in force: part tabs and
/// panels set their own, which remain when the generic pages return.
class AppliedShape {
public:
    /// The dependencies; all outlive it.
    struct Parts {
        Session& session;
        RunControls& run;
        PinLayer& pins;
        const WordEngine& engine;
    };

    AppliedShape(forms::Form& form, const Parts& parts);

    // Set by the owner of the panels and the dialog.
    /// An open panel whose words have the shape in force, as "the ZT72516 panel"; empty for none.
    std::function<std::string()> holdingPanel = [] { return std::string(); };
    /// Shows the type in force in the dialog.
    std::function<void()> showType = [] {};

    /// A tab has set length and type; `by` as "the ZT72516 tab".
    void lent(std::string by);

    [[nodiscard]] bool isInForce() const;
    /// The tab or panel that set the shape in force; empty when the applied shape is in force, or
    /// something else has set it.
    [[nodiscard]] std::string lender() const;
    /// The type that a file stores: what a tab or a panel has set is not a setting of the user.
    [[nodiscard]] std::int16_t typeToSave() const;
    /// "16 bits, type 1 from the ZT7251x tab".
    [[nodiscard]] std::string inForceText() const;
    /// "Back to 24 bits, type 3".
    [[nodiscard]] std::string backText() const;

    /// Restores the applied length and type, with the idle levels of the port's pins. A panel that
    /// holds its shape sets it again with its next word.
    void BackToAppliedWord();

private:
    Parts parts_;
    Session& session_;
    std::string lender_;
    std::int16_t lentLength_ = 0;
    std::int16_t lentType_ = 0;

public:
    forms::MenuItem itemAppliedWord;
};

} // namespace bitlux
