#pragma once

#include <optional>

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace bitlux::gui {

/// What the window remembers for its user from one session to the next: its position, whether it is
/// dark, and which configuration files were used. Without a file it remembers nothing.
class UserSettings {
public:
    static constexpr qsizetype recentLimit = 8;

    /// `fileName` need not exist. `program` separates programs with windows of their own.
    explicit UserSettings(QString fileName = {}, QString program = "window");

    /// The file of this user.
    [[nodiscard]] static QString standardFile();

    /// Full names, the last one used first.
    [[nodiscard]] QStringList recentFiles() const;
    void fileUsed(const QString& fileName);
    void clearRecentFiles();

    /// The result of QWidget::saveGeometry; empty when nothing is known.
    [[nodiscard]] QByteArray place() const;
    void setPlace(const QByteArray& place);

    /// Whether the user wants dark windows; nothing when the user never chose, and the desktop
    /// decides.
    [[nodiscard]] std::optional<bool> dark() const;
    void setDark(bool dark);

private:
    [[nodiscard]] QVariant value(const QString& key) const;
    void setValue(const QString& key, const QVariant& value);
    [[nodiscard]] QString placeKey() const { return program_ + "/place"; }

    QString fileName_;
    QString program_;
};

} // namespace bitlux::gui
