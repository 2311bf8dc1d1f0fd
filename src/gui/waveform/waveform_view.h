#pragma once

#include "gui/waveform/wave_canvas.h"
#include "gui/widgets/names_box.h"
#include "program/program.h"

#include <array>

#include <QDockWidget>
#include <QElapsedTimer>
#include <QTimer>

class QBoxLayout;
class QComboBox;
class QLabel;
class QMainWindow;
class QMenu;
class QPushButton;

namespace bitlux::gui {

/// The waveform of the last word beside the log, or of a word that is held while others are sent;
/// on request in a row with the words before it. Words are recorded while the view is open; it
/// begins with the last few.
class WaveformView : public QDockWidget {
public:
    static constexpr int shortPause = 16;    ///< milliseconds to the refresh after a single word
    static constexpr int refreshPause = 100; ///< between refreshes; faster ones could not be seen
    static constexpr std::uint64_t rowLength = 8; ///< words

    WaveformView(Program& program, QWidget* parent);

    Event<> closed; ///< by its button

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    QPushButton* addButton(QBoxLayout& row, const QString& text, const QString& name,
                           const QString& tip);
    void addWordButtons(QBoxLayout& row);
    void addZoomButtons(QBoxLayout& row);
    void addSaveButtons(QBoxLayout& row);
    void addEdgeButtons(QBoxLayout& row);
    void followLines();
    void follow();
    void refreshSoon();
    void refresh();
    [[nodiscard]] QString placeText() const;
    void showWord(std::uint64_t number);
    void followNames();
    void step(int words);
    void showReadout();
    void makeRoom();

    Program& program_;
    WaveformRecording& recording_;
    WaveCanvas* canvas_;
    QLabel* place_ = nullptr;
    NamesBox* names_ = nullptr;
    QComboBox* lines_ = nullptr; ///< the line for moving along edges; all, then each
    QLabel* readout_;
    QLabel* difference_;
    QPushButton* previous_ = nullptr;
    QPushButton* next_ = nullptr;
    QPushButton* hold_ = nullptr;
    QPushButton* inRow_ = nullptr;
    QPushButton* saveVcd_ = nullptr;
    QPushButton* saveSr_ = nullptr;
    QTimer timer_; ///< runs while words wait to be shown
    QElapsedTimer sinceRefresh_;
    bool startedHere_ = false; ///< by this view; a recording that was started elsewhere continues
    std::uint64_t known_ = 0;  ///< number of words at the last refresh
    std::array<Subscription, 5> words_; ///< while it is open
};

/// Adds the menu entry that opens and closes the view, which is made when it is first opened.
void addWaveformEntry(QMenu& menu, QMainWindow& window, Program& program);

} // namespace bitlux::gui
