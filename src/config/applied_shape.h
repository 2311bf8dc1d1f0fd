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

/// Length and type of words as they were applied last, against those in force: tabs of parts and
/// panels bring theirs, which stay when the generic pages come back.
class AppliedShape {
public:
    /// What it works with; all outlive it.
    struct Parts {
        Session& session;
        RunControls& run;
        PinLayer& pins;
        const WordEngine& engine;
    };

    AppliedShape(forms::Form& form, const Parts& parts);

    // Set by whoever owns the panels and the dialog.
    /// An open panel whose words have the shape in force, as "the ZT72516 panel"; empty for none.
    std::function<std::string()> holdingPanel = [] { return std::string(); };
    /// Shows the type in force in the dialog.
    std::function<void()> showType = [] {};

    /// A tab has set length and type; `by` as "the ZT72516 tab".
    void lent(std::string by);

    [[nodiscard]] bool isInForce() const;
    /// Who brought the shape in force; empty when that is the applied one, or something else has
    /// set it.
    [[nodiscard]] std::string lender() const;
    /// The type that a file keeps: what a tab or a panel has brought is none of the user's
    /// settings.
    [[nodiscard]] std::int16_t typeToSave() const;
    /// "16 bits, type 1 from the ZT7251x tab".
    [[nodiscard]] std::string inForceText() const;
    /// "Back to 24 bits, type 3".
    [[nodiscard]] std::string backText() const;

    /// Words have the applied length and type again, and the port's pins rest as these want it. A
    /// panel that holds its shape takes it anew with its next word.
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
