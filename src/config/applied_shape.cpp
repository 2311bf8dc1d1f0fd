#include "config/applied_shape.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

namespace bitlux {

AppliedShape::AppliedShape(forms::Form& form, const Parts& parts)
    : parts_(parts),
      session_(parts.session),
      itemAppliedWord(form, "itemAppliedWord", "&Back to Applied Length and Type") {
    form.procedure("itemAppliedWord_Click", [this] { BackToAppliedWord(); });
    form.procedure("BackToAppliedWord", [this] { BackToAppliedWord(); });
}

void AppliedShape::lent(std::string by) {
    lender_ = std::move(by);
    lentLength_ = session_.SPIWordLength;
    lentType_ = session_.SPIType;
}

bool AppliedShape::isInForce() const {
    return session_.SPIWordLength == session_.SavedSPIWordLength &&
           session_.SPIType == session_.SavedSPIType;
}

std::string AppliedShape::lender() const {
    if (isInForce())
        return {};
    if (std::string panel = holdingPanel(); !panel.empty())
        return panel;
    // Apply may have set one of the two since.
    const auto isFrom = [](std::int16_t now, std::int16_t applied, std::int16_t lent) {
        return now == applied || now == lent;
    };
    const bool fromTab = isFrom(session_.SPIWordLength, session_.SavedSPIWordLength, lentLength_) &&
                         isFrom(session_.SPIType, session_.SavedSPIType, lentType_);
    return fromTab ? lender_ : std::string();
}

std::int16_t AppliedShape::typeToSave() const {
    return lender().empty() ? session_.SPIType : session_.SavedSPIType;
}

std::string AppliedShape::inForceText() const {
    const std::string by = lender();
    return fmt::format("{} bits, type {} {}", session_.SPIWordLength, session_.SPIType,
                       by.empty() ? "instead of what was applied" : "from " + by);
}

std::string AppliedShape::backText() const {
    return fmt::format("Back to {} bits, type {}", session_.SavedSPIWordLength,
                       session_.SavedSPIType);
}

void AppliedShape::BackToAppliedWord() {
    parts_.run.cmdStopContinuous_Click();
    if (isInForce())
        return;
    const bool dialogShowsIt = session_.SPITypeTab == session_.SPIType; // as some panels make it
    session_.SPIWordLength = session_.SavedSPIWordLength;
    session_.WordToSend.assign(
        static_cast<std::size_t>(std::max<int>(session_.SavedSPIWordLength, 0)), 0);
    session_.SPIType = session_.SavedSPIType;
    if (dialogShowsIt)
        showType();
    if (session_.ParallelPortReady && !parts_.engine.usesDongle())
        parts_.pins.rest();
}

} // namespace bitlux
