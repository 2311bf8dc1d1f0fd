#include "gui/window/recovered_menu.h"

#include <utility>

#include <QDateTime>
#include <QFileInfo>
#include <QLocale>

namespace bitlux::gui {

RecoveredMenu::RecoveredMenu(std::function<std::vector<RecoveredFile>()> files,
                             std::function<void(const RecoveredFile&)> open, QWidget* parent)
    : QMenu("Open Reco&vered", parent), files_(std::move(files)), open_(std::move(open)) {
    setObjectName("openRecovered");
    setToolTipsVisible(true);
    connect(this, &QMenu::aboutToShow, this, [this] { fill(); });
}

void RecoveredMenu::fill() {
    clear();
    int number = 0;
    for (const RecoveredFile& file : files_())
        addFile(++number, file);
    if (isEmpty())
        addAction("No unsaved work was kept")->setEnabled(false);
}

void RecoveredMenu::addFile(int number, const RecoveredFile& file) {
    constexpr std::int64_t nanosecondsOfMillisecond = 1'000'000;
    const QString origin = QString::fromStdString(file.origin);
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(file.time / nanosecondsOfMillisecond);
    QString text =
        QString("%1   %2").arg(origin.isEmpty() ? "(no name yet)" : QFileInfo(origin).fileName(),
                               QLocale().toString(time, "ddd d MMM yyyy, HH:mm"));
    text.replace('&', "&&").replace('\t', ' ');
    const QString key = number < 10 ? QString("&%1").arg(number) : QString("1&0");
    QAction* action = addAction(QString("%1  %2").arg(key, text));
    action->setToolTip(origin.isEmpty() ? QString("It was never saved")
                                        : QString("Unsaved changes of %1").arg(origin));
    connect(action, &QAction::triggered, this, [this, file] { open_(file); });
}

} // namespace bitlux::gui
