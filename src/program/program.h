#pragma once

#include "chips/chip_library.h"
#include "config/configure_dialog.h"
#include "journal/observed_boxes.h"
#include "platform/clock.h"
#include "platform/desk.h"
#include "platform/forms/form_set.h"
#include "platform/hardware.h"
#include "platform/linux/user_marker_files.h"
#include "program/about_form.h"
#include "program/decoded_words.h"
#include "program/journal_recording.h"
#include "program/main_form.h"
#include "program/panels.h"
#include "program/waveform_recording.h"
#include "program/word_copies.h"
#include "sending/add_wait_form.h"
#include "sending/save_batch_form.h"
#include "session/live_options.h"
#include "session/session.h"
#include "transfer/adapter_bus.h"
#include "transfer/pin_layer.h"
#include "transfer/word_engine.h"

#include <functional>
#include <string>

namespace bitlux {

namespace zt72518 {
class Watchdog;
}

/// The program without its window: all modules put together on a platform. Every front end (window,
/// command line, script, test) works on its forms.
class Program {
public:
    Program(const Hardware& hardware, const Desk& desk);
    /// Ends the program if it has not ended yet.
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Starts the program: sets the session and the forms to their defaults, shows the main form,
    /// and opens the configuration file that the command line names. The whole command line is the
    /// name, verbatim.
    void Main(const std::string& commandLine = {});
    /// Whether a file of this name exists and is not a folder; false also when this cannot be
    /// determined.
    static bool ValidFile(const std::string& name);
    /// Who wants the program closed.
    enum class Closing { User, System };
    /// The close box: stops a continuous run, asks whether to save changed settings, and ends the
    /// program. When saving fails or is cancelled, the program continues, unless the system ends
    /// it; it also continues when the question is closed without Yes or No. Harmless when repeated,
    /// also while the question is shown.
    void close(Closing who = Closing::User);
    /// Exit by the user: as close(), with the question before anything closes, and then the handler
    /// of the menu item.
    void exit();
    /// An orderly end without a question: a continuous run stops, unsaved work is kept if the front
    /// end enabled this, the dongle is closed and the pins go idle. Harmless when repeated.
    void end();
    [[nodiscard]] bool running() const { return running_; }
    /// Whether close() is under way; the question about saving may be on the screen.
    [[nodiscard]] bool closing() const { return closing_; }
    /// Opens a configuration file that was chosen without a dialog. A failure is shown in a box;
    /// when there is no such file, nothing changes.
    void open(const std::string& fileName);
    /// Opens unsaved work that was kept; a failure is shown in a box.
    void openRecovered(const RecoveredFile& file);

    /// Copies a chip file from anywhere to the user's folder and shows its tab, after a question
    /// when the folder has another one of its name. A failure is shown in a box.
    void openChip(const std::string& fileName);

    /// The program has ended in any way; the front end closes its windows.
    Event<> ended;
    /// The user requested the help.
    Event<> helpRequested;

    /// Records what happens on either bus from now on; the trace outlives the recording.
    void startRecording(WireListener& trace);
    void stopRecording();
    /// The words on the wire as waveforms, recorded on demand.
    [[nodiscard]] WaveformRecording& waveform() { return waveform_; }
    /// The words and their answers as a file that can be sent again, recorded on demand.
    [[nodiscard]] JournalRecording& journal() { return journal_; }
    /// Save the words that waveform() keeps; see waveform_files.h.
    void saveVcd(const std::string& fileName) const { waveform_.saveVcd(fileName); }
    SampledWords saveSr(const std::string& fileName) const { return waveform_.saveSr(fileName); }

    [[nodiscard]] forms::FormSet& forms() { return forms_; }
    /// The chips of the program and of users. No file is read before a chip is requested.
    [[nodiscard]] chips::ChipLibrary& chipLibrary() { return library_; }
    [[nodiscard]] Session& session() { return session_; }
    [[nodiscard]] PinLayer& pins() { return pins_; }
    [[nodiscard]] const AdapterBus& adapters() const { return adapters_; }
    [[nodiscard]] DongleLink& dongle() { return dongle_; }
    [[nodiscard]] WordEngine& engine() { return engine_; }
    [[nodiscard]] const WordEngine& engine() const { return engine_; }
    [[nodiscard]] MainForm& mainForm() { return *mainForm_; }
    [[nodiscard]] ConfigureDialog& dialog() { return *dialog_; }
    [[nodiscard]] SaveBatchForm& saveBatchForm() { return *saveBatch_; }
    [[nodiscard]] AddWaitForm& addWaitForm() { return *addWait_; }
    [[nodiscard]] AboutForm& aboutForm() { return *about_; }
    [[nodiscard]] Panels& panels() { return panels_; }
    /// The words of the Session Log by the names of a chip.
    [[nodiscard]] DecodedWords& decoded() { return decoded_; }
    [[nodiscard]] WordCopies& copies() { return copies_; }

private:
    void registerProcedures(MainForm& form);
    void loadMainForm(MainForm& form);
    [[nodiscard]] zt72518::Watchdog& zt72518Watchdog();
    void showPanel(std::int32_t part);
    void showType();
    void itemOpenChip_Click();
    void keepChip(const std::string& fileName);
    void openFromCommandLine(const std::string& commandLine);
    void itemExit_Click();
    void Form_Unload();
    /// Asks whether to save what has changed. False when the user stays, or when the save fails.
    [[nodiscard]] bool mayEnd();
    [[nodiscard]] bool saveBeforeEnd();
    void putIdleLevelsOnPins();
    void Start_USB();
    void itemUpdateDongle_Click();
    void unloadPanels();
    /// False after a message when the next word does not go through the dongle.
    bool canReachDongle();
    void restPins();

    ObservedBoxes boxes_;
    Desk desk_;
    const Clock& clock_;
    const UserMarkerFiles userMarkers_;
    const MarkerFiles& markers_;
    Session session_;
    chips::ChipLibrary library_;
    forms::FormSet forms_;
    LiveOptions options_;
    PinLayer pins_;
    AdapterBus adapters_;
    FailureBoxes failures_;
    DongleLink dongle_;
    WordEngine engine_;
    WireTap tap_;
    WireListener* trace_ = nullptr;
    WaveformRecording waveform_;
    forms::FormSlot<MainForm> mainForm_;
    JournalRecording journal_;
    forms::FormSlot<ConfigureDialog> dialog_;
    forms::FormSlot<SaveBatchForm> saveBatch_;
    forms::FormSlot<AddWaitForm> addWait_;
    forms::FormSlot<AboutForm> about_;
    Panels panels_;
    DecodedWords decoded_;
    WordCopies copies_{*this};
    bool running_ = false;
    bool closing_ = false;
    bool settled_ = false;    ///< the user has answered what to do with the changes
    bool systemEnds_ = false; ///< without waiting for a successful save
    bool searching_ = false;
};

} // namespace bitlux
