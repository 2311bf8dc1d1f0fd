#pragma once

#include "gui/window/user_settings.h"

#include <functional>

#include <QMenu>

namespace bitlux::gui {

/// The configuration files that were used last, read when the menu opens.
class RecentMenu : public QMenu {
public:
    /// `settings` outlive the menu.
    RecentMenu(UserSettings& settings, std::function<void(const QString& fileName)> open,
               QWidget* parent);

private:
    void fill();
    void addFile(int number, const QString& fileName);

    UserSettings& settings_;
    std::function<void(const QString&)> open_;
};

} // namespace bitlux::gui
