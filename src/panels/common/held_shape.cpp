#include "panels/common/held_shape.h"

#include "platform/failure.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

namespace bitlux {

namespace {

std::uint8_t* flagNamed(Session& session, const std::string& name) {
    if (name.empty())
        return nullptr;
    if (name == "ZT72518PanelActive")
        return &session.ZT72518PanelActive;
    if (name == "ZT72516PanelActive")
        return &session.ZT72516PanelActive;
    if (name == "ZT72361PanelActive")
        return &session.ZT72361PanelActive;
    if (name == "ZT72537PanelActive")
        return &session.ZT72537PanelActive;
    throw Failure(Failure::Kind::OutOfRange,
                  fmt::format("No variable of the session is called {}", name));
}

} // namespace

HeldShape::HeldShape(Session& session, const chips::WordFormat& format,
                     const chips::PanelLayout& panel, std::function<void()> typeChanged)
    : session_(session),
      format_(format),
      leavesType_(panel.leavesType),
      active_(flagNamed(session, panel.active)),
      typeChanged_(std::move(typeChanged)) {}

void HeldShape::take() {
    held_ = true;
    session_.SPIWordLength = static_cast<std::int16_t>(format_.bits);
    session_.WordToSend.assign(static_cast<std::size_t>(format_.bits), 0);
    if (!leavesType_)
        session_.SPIType = format_.type;
    if (active_ != nullptr)
        *active_ = 1;
    typeChanged_();
}

void HeldShape::keep() {
    const bool otherType = !leavesType_ && session_.SPIType != format_.type;
    if (held_ && (session_.SPIWordLength != format_.bits || otherType))
        take();
}

void HeldShape::restore() {
    held_ = false;
    if (active_ != nullptr)
        *active_ = 0;
    session_.SPIWordLength = session_.SavedSPIWordLength;
    session_.WordToSend.assign(
        static_cast<std::size_t>(std::max<int>(session_.SavedSPIWordLength, 0)), 0);
    session_.SPIType = session_.SavedSPIType;
    typeChanged_();
}

} // namespace bitlux
