#pragma once

#include "program/program.h"

#include <QString>
#include <QTimer>
#include <QWidget>

namespace bitlux::gui {

/// The title of the main window: the file in use, and soon a star when something differs from it.
class WorkTitle : public QObject {
public:
    static constexpr int shortPause = 100; ///< milliseconds from a change to the star
    static constexpr int longPause = 1000; ///< of a large configuration

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
