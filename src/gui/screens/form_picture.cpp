#include "gui/screens/form_picture.h"

#include "gui/window/main_window.h"

#include <QApplication>
#include <QDialog>

namespace bitlux::gui {

void savePicture(MainWindow& window, QWidget& part, const QString& name) {
    window.binder().flush();
    QApplication::processEvents();
    part.grab().save(name + ".png");
}

void saveFormPicture(MainWindow& window, const std::string& caption, QSize size,
                     const QString& file) {
    window.binder().flush();
    for (QDialog* dialog : window.findChildren<QDialog*>()) {
        if (dialog->windowTitle().toStdString() != caption)
            continue;
        const QSize before = dialog->size();
        if (!size.isEmpty())
            dialog->resize(size);
        window.binder().flush();
        constexpr int passes = 3; // what becomes visible changes the layouts above it in turn
        for (int pass = 0; pass < passes; ++pass)
            QApplication::processEvents();
        dialog->grab().save(file);
        dialog->resize(before);
    }
}

void saveRegisterPages(MainWindow& window, QWidget& panel, PanelForm& form, const QString& prefix,
                       const QString& tail) {
    for (int page = 1; page <= form.registerTabs.count(); ++page) {
        form.registerTabs.click(page);
        savePicture(window, panel,
                    prefix + QString("-register-%1").arg(page, 2, 10, QChar('0')) + tail);
    }
}

} // namespace bitlux::gui
