#include "gui/window/recent_menu.h"

#include <utility>

#include <QFileInfo>

namespace bitlux::gui {

RecentMenu::RecentMenu(UserSettings& settings, std::function<void(const QString&)> open,
                       QWidget* parent)
    : QMenu("Open &Recent", parent), settings_(settings), open_(std::move(open)) {
    setToolTipsVisible(true);
    connect(this, &QMenu::aboutToShow, this, [this] { fill(); });
}

void RecentMenu::fill() {
    clear();
    const QStringList files = settings_.recentFiles();
    int number = 0;
    for (const QString& file : files)
        addFile(++number, file);
    if (files.isEmpty())
        addAction("No files yet")->setEnabled(false);
    addSeparator();
    QAction* clearList = addAction("&Clear List", this, [this] { settings_.clearRecentFiles(); });
    clearList->setEnabled(!files.isEmpty());
}

void RecentMenu::addFile(int number, const QString& fileName) {
    constexpr int folderWidth = 320;
    const QFileInfo file(fileName);
    const QString folder = fontMetrics().elidedText(file.path(), Qt::ElideMiddle, folderWidth);
    QString text = file.fileName() + "   " + folder;
    text.replace('&', "&&").replace('\t', ' ');
    QAction* action = addAction(QString("&%1  %2").arg(number).arg(text));
    action->setToolTip(fileName);
    connect(action, &QAction::triggered, this, [this, fileName] { open_(fileName); });
}

} // namespace bitlux::gui
