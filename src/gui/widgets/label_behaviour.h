#pragma once

#include <QLabel>
#include <QObject>

namespace bitlux::gui {

/// What a label does beside showing its text: it can be pressed, by the left button, by Space while
/// it has the focus, or by an assistive tool; and it can be a lamp, lit or not. Owned by its label.
class LabelBehaviour : public QObject {
    Q_OBJECT

public:
    explicit LabelBehaviour(QLabel& label);

    /// The behaviour of a label; null for one that only shows a text.
    [[nodiscard]] static LabelBehaviour* of(const QLabel& label);

    void setPressable(bool pressable) { pressable_ = pressable; }
    [[nodiscard]] bool isPressable() const { return pressable_; }
    /// Does nothing on a label that cannot be pressed now.
    void press();

    /// Makes the label a lamp; assistive tools are notified of its changes.
    void light(bool lit);
    /// The label is a bit of a row, which alone knows the colour of a one: its owner calls light().
    void setBitOfRow() { bitOfRow_ = true; }
    [[nodiscard]] bool isBitOfRow() const { return bitOfRow_; }
    [[nodiscard]] bool isLamp() const { return lamp_; }
    [[nodiscard]] bool isLit() const { return lit_; }

signals:
    void clicked();
    /// Also reports the single clicks of a double click.
    void doubleClicked();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QLabel& label_;
    bool pressable_ = false;
    bool lamp_ = false;
    bool lit_ = false;
    bool bitOfRow_ = false;
    bool held_ = false; ///< the left button was pressed on the label
};

} // namespace bitlux::gui
