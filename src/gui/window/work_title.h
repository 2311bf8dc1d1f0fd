#pragma once

#include "program/program.h"

#include <QString>
#include <QTimer>
#include <QWidget>

namespace bitlux::gui {

/// The title of the main window: the file in use, and shortly after a change a star while the state
/// differs from the file.
class WorkTitle : public QObject {
public:
    static constexpr int shortPause = 100; ///< milliseconds from a change to the star
    static constexpr int longPause = 1000; ///< of a large configuration

    /// The current state counts as saved. Both outlive it.
    WorkTitle(Program& program, QWidget& window);

    /// Updates the title.
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
