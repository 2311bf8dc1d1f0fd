#pragma once

#include <string>

#include <QSize>
#include <QString>

namespace bitlux::gui {

class MainWindow;

/// Saves a picture of the window of a form, in its own size or in another one.
void saveFormPicture(MainWindow& window, const std::string& caption, QSize size,
                     const QString& file);

} // namespace bitlux::gui
