#include "gui/window/work_title.h"

#include <QFileInfo>

namespace bitlux::gui {

WorkTitle::WorkTitle(Program& program, QWidget& window)
    : form_(program.mainForm()), session_(program.session()), window_(window) {
    later_.setSingleShot(true);
    later_.setParent(&window); // tests find it by its name
    later_.setObjectName("workTitle");
    connect(&later_, &QTimer::timeout, this, [this] { showChanged(); });
    form_.unsaved.compareFromNow();
}

QString WorkTitle::fileName() const {
    const std::optional<std::string>& origin = form_.files.recoveredFrom();
    const std::string& file = origin ? *origin : session_.ConfigFileName;
    const QString name = QFileInfo(QString::fromStdString(file)).fileName();
    return origin ? (name + " (recovered)").trimmed() : name;
}

void WorkTitle::follow() {
    QString name = fileName();
    name.replace("[*]", "[*][*]"); // "[*]" is the toolkit's mark of a changed file
    window_.setWindowTitle(name.isEmpty() ? QString("%1[*]").arg(applicationTitle)
                                          : QString("%1[*] - %2").arg(name, applicationTitle));
    if (!later_.isActive())
        later_.start(form_.unsaved.isLarge() ? longPause : shortPause);
}

void WorkTitle::showChanged() {
    const bool changed = form_.unsaved.differs();
    if (window_.isWindowModified() != changed)
        window_.setWindowModified(changed);
}

} // namespace bitlux::gui
