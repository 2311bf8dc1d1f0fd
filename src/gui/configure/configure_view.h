#pragma once

#include "config/configure_dialog.h"
#include "gui/configure/pin_marks.h"
#include "gui/widgets/form_dialog.h"

#include <array>

namespace bitlux::gui {

class TypeDiagram;

/// The window of frmConfigureSPI: its controls on four pages, each made when it is first shown. It
/// is shown while the form is visible.
class ConfigureView : public FormDialog {
public:
    ConfigureView(ConfigureDialog& form, Binder& binder, QWidget* parent);

    /// OK has applied the settings and closed the dialog.
    Event<> accepted;

protected:
    /// When it opens or the page changes, the first field has the focus.
    void showEvent(QShowEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    [[nodiscard]] bool focusIsHidden() const;
    void focusPage();
    static constexpr int pageCount = 4;

    void followForm();
    void makeShownPages();
    void makeGeneralPage(QWidget* page);
    QWidget* makePortBox(QWidget* page);
    QWidget* makePartsBox(QWidget* page);
    void makePinsPage(QWidget* page);
    QWidget* makePinBox(QWidget* page);
    QWidget* makeTypeBox(QWidget* page);
    QWidget* makePicture(int type, QWidget* parent);
    void makeExtraPinsPage(QWidget* page);
    QWidget* makePinRows(forms::Frame& frame, const PinRows& rows, const QString& note,
                         QWidget* page);
    QWidget* makeDonglePins(QWidget* page);
    void makeLogPage(QWidget* page);
    QComboBox* makePinField(forms::ComboBox& control, QWidget* parent);
    void followWordLength();
    void leaveOutHiddenControls();

    /// A group box with a pair of options, one below the other.
    QGroupBox* pairBox(forms::Frame& frame, forms::OptionButton& first, forms::OptionButton& second,
                       QWidget* parent);

    ConfigureDialog& form_;
    Binder& binder_;
    QTabBar* tabs_;
    std::array<QWidget*, pageCount> pages_{};
    std::array<bool, pageCount> made_{};
    std::array<TypeDiagram*, 8> diagrams_{};
    PinMarks pinMarks_;
    QComboBox* wordLength_ = nullptr;
    QLabel* wordLengthNote_ = nullptr;
    bool wantsFocus_ = false;
    Subscription flushed_;
};

} // namespace bitlux::gui
