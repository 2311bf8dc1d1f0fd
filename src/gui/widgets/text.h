#pragma once

#include <string>

#include <QString>

namespace bitlux::gui {

[[nodiscard]] inline QString textOf(const std::string& text) {
    return QString::fromStdString(text);
}

} // namespace bitlux::gui
