#include "python/script_bench.h"

#include "platform/failure.h"
#include "workbench/library_chips.h"

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr double nanosecondsOfMillisecond = 1e6;

std::int64_t nanosecondsOf(double milliseconds) {
    return std::llround(milliseconds * nanosecondsOfMillisecond);
}

std::unique_ptr<BenchClock> makeClock(bool realTime, const Interruption& interruption) {
    if (realTime)
        return std::make_unique<InterruptibleRealClock>(interruption);
    return std::make_unique<InterruptibleVirtualClock>(interruption);
}

/// While it exists, the session has another shape of words.
class BorrowedShape {
public:
    BorrowedShape(Session& session, int bits, int type)
        : session_(session), length_(session.SPIWordLength), type_(session.SPIType) {
        if (bits < 0 || bits > session.MaxSPIBits)
            throw Failure(Failure::Kind::OutOfRange, "A word has 1 to 160 bits");
        if (type < 0 || type > 8)
            throw Failure(Failure::Kind::OutOfRange, "The SPI type is 1 to 8");
        if (bits != 0)
            session.SPIWordLength = static_cast<std::int16_t>(bits);
        if (type != 0)
            session.SPIType = static_cast<std::int16_t>(type);
    }
    ~BorrowedShape() {
        session_.SPIWordLength = length_;
        session_.SPIType = type_;
    }
    BorrowedShape(const BorrowedShape&) = delete;
    BorrowedShape& operator=(const BorrowedShape&) = delete;

private:
    Session& session_;
    std::int16_t length_;
    std::int16_t type_;
};

} // namespace

ScriptBench::ScriptBench(BenchSetup setup, Interruption interruption,
                         std::shared_ptr<BenchLock> lock)
    : lock_(std::move(lock)),
      setup_(std::move(setup)),
      interruption_(std::move(interruption)),
      clock_(makeClock(setup_.realTime, interruption_)),
      bench_(std::make_unique<VirtualBench>(*clock_, makeBenchDevice(setup_.device))),
      usb_(std::make_unique<InterruptibleUsbHost>(bench_->dongle, *clock_, interruption_)),
      controls_(std::make_unique<BenchControls>(*bench_, setup_.device)) {
    bench_->port.setAddresses(setup_.ports);
    const bool fileChooses = !setup_.config.empty() && !setup_.bus;
    if (setup_.dongle || setup_.bus == Bus::Dongle || fileChooses)
        bench_->dongle.plug();
    for (const MessageBox::Answer answer : setup_.answers)
        boxes_.answer(answer);
    start({.port = bench_->port, .usb = *usb_, .clock = *clock_, .markers = &markers_});
    if (setup_.bus || fileChooses)
        makeReady(setup_.bus, setup_.config, setup_.words);
}

ScriptBench::ScriptBench(const HardwareSetup& setup, Interruption interruption,
                         std::shared_ptr<BenchLock> lock)
    : lock_(std::move(lock)),
      interruption_(std::move(interruption)),
      clock_(makeClock(true, interruption_)),
      hardware_(std::make_unique<LinuxHardware>(setup.choice)),
      usb_(std::make_unique<InterruptibleUsbHost>(hardware_->usb(), *clock_, interruption_)) {
    hardware_->demandChosen(DongleLink::deviceInterfaceClass);
    start({.port = hardware_->port(), .usb = *usb_, .clock = *clock_});
    makeReady(setup.bus, setup.config, setup.words);
}

ScriptBench::~ScriptBench() {
    // The end of the program is not interrupted.
    interruption_.check = [] {};
}

void ScriptBench::start(const Hardware& hardware) {
    loop_ = std::make_unique<InterruptibleLoop>(*clock_, interruption_);
    program_ = std::make_unique<Program>(
        hardware,
        Desk{.boxes = boxes_, .fileDialogs = fileDialogs_, .pointer = pointer_, .loop = *loop_});
    forms::FormSet& forms = program_->forms();
    forms.handlerFailed.subscribe(
        [this](const std::exception_ptr& thrown) { failures_.push_back(thrown); });
    forms.formGoing.subscribe([this](forms::Form&) { ++generation_; });
    loop_->drive(forms);
    if (bench_)
        bench_->wireFor(program_->session());
    record(true);
    program_->Main(setup_.commandLine);
    if (controls_)
        controls_->isClosed = [this] { return !program_->running(); };
    failures_.clear(); // the start continues after these failures; their boxes report them
}

std::string ScriptBench::refusal() const {
    return hardware_ ? hardware_->usb().refusal() : "";
}

void ScriptBench::chooseBusOrRaise(std::optional<Bus> bus) {
    const std::size_t before = boxes_.shown().size();
    if (chooseBus(*program_, bus, [this] { return refusal(); }))
        return;
    std::string text = refusal();
    if (text.empty())
        text = bus ? lastMessage(before)
                   : "Neither a dongle nor a parallel port can be used; \"bitlux doctor\" tells "
                     "what is missing.";
    throw Failure(Failure::Kind::PortUnusable, text);
}

/// A file that chooses the port is read again when there is one: what it says of its pins counts
/// only then. The dongle needs an Apply to take the settings of such a file.
void ScriptBench::openSettings(std::optional<Bus> bus, const std::string& config) {
    open(config);
    if (bus != Bus::Port && program_->engine().usesDongle())
        return;
    if (bus != Bus::Dongle) {
        chooseBusOrRaise(Bus::Port);
        open(config);
        return;
    }
    chooseBusOrRaise(bus);
    applyWordSettings(*program_, {});
    program_->mainForm().quickCommands.RestoreQuickCommands();
}

void ScriptBench::makeReady(std::optional<Bus> bus, const std::string& config,
                            const WordSettings& words) {
    const std::size_t before = boxes_.shown().size();
    if (config.empty()) {
        chooseBusOrRaise(bus);
        applyWordSettings(*program_, words);
    } else {
        openSettings(bus, config);
    }
    if (boxes_.shown().size() > before)
        throw Failure(Failure::Kind::PortUnusable, lastMessage(before));
    program_->session().ConfigDirty = ConstOff;
    trace_.clear();
}

void ScriptBench::raiseFailure(std::size_t before) {
    if (failures_.size() <= before)
        return;
    const std::exception_ptr thrown = failures_[before];
    failures_.resize(before);
    std::rethrow_exception(thrown);
}

void ScriptBench::runFor(double milliseconds) {
    const std::int64_t end = clock_->nanoseconds() + nanosecondsOf(milliseconds);
    do
        loop_->waitForEvents(std::max<std::int64_t>(end - clock_->nanoseconds(), 0));
    while (clock_->nanoseconds() < end);
}

void ScriptBench::at(double milliseconds, std::function<void()> action) {
    loop_->atTime(clock_->nanoseconds() + nanosecondsOf(milliseconds), std::move(action));
}

double ScriptBench::milliseconds() const {
    return static_cast<double>(clock_->nanoseconds()) / nanosecondsOfMillisecond;
}

std::string ScriptBench::lastMessage(std::size_t before) const {
    return boxes_.shown().size() > before ? boxes_.shown().back().text : "";
}

void ScriptBench::transfer(std::vector<WordElements> words, int bits, int type,
                           std::vector<WordElements>& answers) {
    Session& session = program_->session();
    const std::int16_t usualType = session.SPIType;
    {
        const BorrowedShape shape(session, bits, type);
        if (session.SPIType != usualType)
            restClock();
        program_->engine().requireCarriedLength();
        for (WordElements& word : words) {
            interruption_.check();
            answers.push_back(transferWord(std::move(word)));
        }
    }
    if (type != 0 && type != usualType)
        restClock();
}

WordElements ScriptBench::transferWord(WordElements word) {
    Session& session = program_->session();
    word.resize(static_cast<std::size_t>(std::max<int>(session.SPIWordLength, 0)));
    session.WordToSend = std::move(word);
    const bool onDongle = program_->engine().usesDongle();
    const std::size_t before = boxes_.shown().size();
    program_->engine().SendSPI();
    if (!session.WordAnswered)
        throw Failure(onDongle ? Failure::Kind::LinkFailed : Failure::Kind::PortUnusable,
                      lastMessage(before));
    return session.WordReceived;
}

std::uint64_t ScriptBench::answered(const std::function<std::uint64_t()>& send) {
    interruption_.check();
    const bool onDongle = program_->engine().usesDongle();
    const std::size_t before = boxes_.shown().size();
    try {
        return send();
    } catch (const Failure& failure) {
        if (boxes_.shown().size() == before)
            throw;
        throw Failure(onDongle ? Failure::Kind::LinkFailed : Failure::Kind::PortUnusable,
                      lastMessage(before));
    }
}

void ScriptBench::restClock() {
    const Session& session = program_->session();
    if (session.ParallelPortReady && session.SPIType >= 1 && session.SPIType <= 8)
        program_->pins().rest();
}

void ScriptBench::open(const std::string& fileName) {
    const std::size_t before = boxes_.shown().size();
    ConfigurationFiles& files = program_->mainForm().files;
    bool whole = false;
    const Subscription used = files.fileUsed.follow([&whole] { whole = true; });
    files.open(fileName);
    if (!whole)
        throw Failure(Failure::Kind::File, fileName + ": " + lastMessage(before));
}

void ScriptBench::save(const std::string& fileName) {
    Session& session = program_->session();
    const std::string old = std::exchange(session.ConfigFileName, fileName);
    try {
        program_->mainForm().files.itemSave_Click();
    } catch (...) {
        session.ConfigFileName = old;
        throw;
    }
}

void ScriptBench::record(bool on) {
    recording_ = on;
    if (on) {
        program_->startRecording(trace_);
        program_->waveform().start();
    } else {
        program_->stopRecording();
        program_->waveform().stop();
    }
}

void ScriptBench::endJournal() {
    const std::string failure = program_->journal().failure();
    program_->journal().stop();
    if (!failure.empty())
        throw Failure(Failure::Kind::File, failure);
}

} // namespace bitlux
