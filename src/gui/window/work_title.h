#pragma once

#include "program/program.h"

#include <QString>
#include <QTimer>
#include <QWidget>

namespace bitlux::gui {

/// The title of the main window: the file in use, and a star while something differs from it. A
/// configuration that is large is compared once a second at most.
class WorkTitle : public QObject {
public:
    /// From now on what there is counts as saved. Both outlive it.
    WorkTitle(Program& program, QWidget& window);

    /// Brings the title up to date.
    void follow();

private:
    [[nodiscard]] QString fileName() const;
    void showChanged();

    MainForm& form_;
    const Session& session_;
    QWidget& window_;
    QTimer later_;
};

} // namespace bitlux::gui
