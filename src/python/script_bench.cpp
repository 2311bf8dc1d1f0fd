#include "python/script_bench.h"

#include "platform/failure.h"
#include "platform/linux/linux_parallel_port.h"
#include "platform/linux/linux_usb_host.h"

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

/// The session with another shape of a word, for as long as it lives.
class BorrowedShape {
public:
    BorrowedShape(Session& session, int bits, int type)
        : session_(session), length_(session.SPIWordLength), type_(session.SPIType) {
        if (bits < 0 || bits > session.MaxSPIBits)
            throw Failure(Failure::Kind::OutOfRange, "A word has 1 to 160 bits");
        if (bits != 0)
            session.SPIWordLength = static_cast<std::int16_t>(bits);
        if (type != 0)
            session.SPIType = static_cast<std::int16_t>(std::clamp(type, -1, 9));
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

BenchControls::BenchControls(VirtualBench& bench, std::string device)
    : bench_(bench), device_(std::move(device)) {}

void BenchControls::connect(const std::string& device) {
    bench_.connect(makeDevice(device, replies_));
    device_ = device;
}

void BenchControls::setReplies(std::vector<Reply> replies) {
    if (device_ != "scripted")
        throw Failure(
            Failure::Kind::OutOfRange,
            fmt::format(R"(The device "{}" answers by itself; "scripted" takes replies)", device_));
    replies_ = std::move(replies);
    connect(device_);
}

void BenchControls::setCommandReplies(std::vector<UsbFrame> replies) {
    commandReplies_ = std::move(replies);
    bench_.dongle.answerCommandsWith(commandReplies_);
}

void BenchControls::setSilent(bool silent) {
    silent_ = silent;
    applyFaults();
}

void BenchControls::setLateMilliseconds(double milliseconds) {
    late_ = milliseconds;
    applyFaults();
}

void BenchControls::setFaults(const std::vector<std::string>& faults, std::uint32_t seed) {
    std::vector<DongleFault> read;
    for (const std::string& fault : faults)
        read.push_back(dongleFaultFrom(fault));
    faults_ = std::move(read);
    seed_ = seed;
    applyFaults();
}

void BenchControls::applyFaults() {
    std::vector<DongleFault> all;
    if (silent_)
        all.push_back({.kind = DongleFault::Kind::Silent});
    if (late_ > 0)
        all.push_back({.kind = DongleFault::Kind::Late, .duration = nanosecondsOf(late_)});
    all.insert(all.end(), faults_.begin(), faults_.end());
    bench_.dongle.setFaults(DongleFaults(std::move(all), seed_));
}

struct ScriptBench::RealHardware {
    LinuxParallelPort port;
    LinuxUsbHost usb;
};

ScriptBench::ScriptBench(BenchSetup setup, Interruption interruption)
    : setup_(std::move(setup)),
      interruption_(std::move(interruption)),
      clock_(makeClock(setup_.realTime, interruption_)),
      bench_(std::make_unique<VirtualBench>(*clock_, makeDevice(setup_.device))),
      usb_(std::make_unique<InterruptibleUsbHost>(bench_->dongle, *clock_, interruption_)),
      controls_(std::make_unique<BenchControls>(*bench_, setup_.device)) {
    bench_->port.setAddresses(setup_.ports);
    if (setup_.dongle || setup_.bus == "dongle")
        bench_->dongle.plug();
    for (const MessageBox::Answer answer : setup_.answers)
        boxes_.answer(answer);
    start({.port = bench_->port, .usb = *usb_, .clock = *clock_, .markers = &markers_});
}

ScriptBench::ScriptBench(Interruption interruption)
    : interruption_(std::move(interruption)),
      clock_(makeClock(true, interruption_)),
      real_(std::make_unique<RealHardware>()),
      usb_(std::make_unique<InterruptibleUsbHost>(real_->usb, *clock_, interruption_)) {
    start({.port = real_->port, .usb = *usb_, .clock = *clock_});
}

ScriptBench::~ScriptBench() {
    // What an end may still wait for asks nobody any more.
    interruption_.check = [] {};
}

void ScriptBench::start(const Hardware& hardware) {
    loop_ = std::make_unique<InterruptibleLoop>(*clock_, interruption_);
    program_ = std::make_unique<Program>(
        hardware,
        Desk{.boxes = boxes_, .fileDialogs = fileDialogs_, .pointer = pointer_, .loop = *loop_});
    forms::FormSet& forms = program_->forms();
    forms.handlerFailed.subscribe([this](const std::string& text) { failures_.push_back(text); });
    forms.formGoing.subscribe([this](forms::Form&) { ++generation_; });
    loop_->drive(forms);
    if (bench_)
        bench_->wireFor(program_->session());
    record(true);
    program_->Main(setup_.commandLine);
    failures_.clear(); // the start goes on after them; their boxes tell
    if (setup_.bus)
        makeReady();
}

void ScriptBench::makeReady() {
    ConfigureDialog& dialog = program_->dialog();
    if (*setup_.bus == "port") {
        if (dialog.ChkSerialPort.checked())
            dialog.ChkSerialPort.setValue(0);
        dialog.Btn_ParallelPort_Click();
    }
    dialog.optHex.setValue(true);
    dialog.cmdApply_Click();
    program_->session().ConfigDirty = ConstOff;
    trace_.clear();
}

void ScriptBench::raiseFailure(std::size_t before) {
    if (failures_.size() <= before)
        return;
    const std::string text = failures_[before];
    failures_.resize(before);
    throw Failure(Failure::Kind::OutOfRange, text);
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

std::vector<std::int16_t> ScriptBench::transfer(std::vector<std::int16_t> word, int bits,
                                                int type) {
    Session& session = program_->session();
    const std::int16_t usualType = session.SPIType;
    {
        const BorrowedShape shape(session, bits, type);
        if (session.SPIType != usualType)
            restClock();
        program_->engine().requireCarriedLength();
        word.resize(static_cast<std::size_t>(std::max<int>(session.SPIWordLength, 0)));
        session.WordToSend = std::move(word);
        program_->engine().SendSPI();
        if (!session.WordAnswered)
            throw Failure(Failure::Kind::PortUnusable, boxes_.shown().back().text);
    }
    if (type != 0 && type != usualType)
        restClock();
    return session.WordReceived;
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

} // namespace bitlux
