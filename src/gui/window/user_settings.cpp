#include "gui/window/user_settings.h"

#include <utility>

#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>

namespace bitlux::gui {

namespace {

constexpr const char* recentKey = "files/recent";
constexpr const char* darkKey = "view/dark";

} // namespace

UserSettings::UserSettings(QString fileName, QString program)
    : fileName_(std::move(fileName)), program_(std::move(program)) {}

QString UserSettings::standardFile() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           "/bitlux-forge/window.conf";
}

QStringList UserSettings::recentFiles() const {
    return value(recentKey).toStringList();
}

void UserSettings::fileUsed(const QString& fileName) {
    const QString name = QFileInfo(fileName).absoluteFilePath();
    QStringList files = recentFiles();
    files.removeAll(name);
    files.prepend(name);
    setValue(recentKey, files.mid(0, recentLimit));
}

void UserSettings::clearRecentFiles() {
    setValue(recentKey, QStringList());
}

QByteArray UserSettings::place() const {
    return value(placeKey()).toByteArray();
}

void UserSettings::setPlace(const QByteArray& place) {
    setValue(placeKey(), place);
}

std::optional<bool> UserSettings::dark() const {
    const QString dark = value(darkKey).toString();
    return dark == "true" || dark == "false" ? std::optional(dark == "true") : std::nullopt;
}

void UserSettings::setDark(bool dark) {
    setValue(darkKey, dark);
}

QVariant UserSettings::value(const QString& key) const {
    if (!QFileInfo::exists(fileName_)) // then most of the rest is not needed
        return {};
    return QSettings(fileName_, QSettings::IniFormat).value(key);
}

void UserSettings::setValue(const QString& key, const QVariant& value) {
    if (!fileName_.isEmpty())
        QSettings(fileName_, QSettings::IniFormat).setValue(key, value);
}

} // namespace bitlux::gui
