#pragma once

#include <functional>

#include <QPushButton>
#include <QTimer>

namespace bitlux::gui {

/// A button for what cannot be undone. The first press shows what will happen; a second one within
/// five seconds does it. Leaving the button, or a change of the text, cancels the first press.
class ConfirmButton : public QPushButton {
public:
    static constexpr int timeOut = 5000; ///< milliseconds

    /// What a press would do now.
    using Question = std::function<QString()>;

    ConfirmButton(Question question, QWidget* parent);

    void setCaption(const QString& caption);
    /// Counts a press; true for the one that confirms.
    [[nodiscard]] bool pressedAgain();

protected:
    void focusOutEvent(QFocusEvent* event) override;

private:
    void ask(const QString& question);
    void rest();

    Question question_;
    QString caption_;
    QString asked_; ///< empty when nothing is to be confirmed
    QTimer timeOut_;
    QTimer doubleClick_; ///< while it runs, a press may be the second half of a double click
};

} // namespace bitlux::gui
