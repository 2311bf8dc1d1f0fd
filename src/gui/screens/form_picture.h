#pragma once

#include "panels/common/panel_form.h"

#include <string>

#include <QSize>
#include <QString>

class QWidget;

namespace bitlux::gui {

class MainWindow;

/// Saves a picture of a part of the window, brought up to date, as `name` with ".png".
void savePicture(MainWindow& window, QWidget& part, const QString& name);

/// Saves a picture of the window of a form, in its own size or in another one.
void saveFormPicture(MainWindow& window, const std::string& caption, QSize size,
                     const QString& file);

/// Saves a picture of every page of registers of a panel.
void saveRegisterPages(MainWindow& window, QWidget& panel, PanelForm& form, const QString& prefix,
                       const QString& tail);

} // namespace bitlux::gui
