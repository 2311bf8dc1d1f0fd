#pragma once

#include "gui/widgets/binder.h"
#include "gui/widgets/names_box.h"
#include "gui/window/decoded_model.h"
#include "program/program.h"

#include <array>

#include <QTableView>
#include <QTimer>

class QBoxLayout;
class QPushButton;

namespace bitlux::gui {

/// The decoded log, in place of the list of the Session Log: a row for each word. It stays at the
/// last one while that is in sight.
class DecodedView : public QTableView {
public:
    static constexpr int refreshPause = 50; ///< milliseconds between refreshes while words come

    DecodedView(Program& program, Binder& binder, QWidget* parent);

    /// The choice of the chip and "Export CSV...", which stand above the table.
    void addTools(QBoxLayout& row);
    [[nodiscard]] QComboBox& names() const { return *names_; }
    [[nodiscard]] QPushButton& exportButton() const { return *export_; }

    /// It follows the words while it is shown.
    void setFollowing(bool isShown);
    /// Shows what there is now.
    void refresh();
    [[nodiscard]] std::vector<std::size_t> selectedWords() const;

    /// How often it was painted.
    [[nodiscard]] int paints() const { return paints_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void prepare();
    void measure();
    void shareRoom();
    void copyRows() const;

    Program& program_;
    Binder& binder_;
    DecodedModel model_;
    NamesBox* names_;
    QPushButton* export_;
    QTimer timer_; ///< runs while words wait to be shown
    int paints_ = 0;
    std::array<Subscription, 3> subscriptions_; ///< while it is shown
};

} // namespace bitlux::gui
