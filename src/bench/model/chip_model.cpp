#include "bench/model/chip_model.h"

#include "bench/model/model_part.h"
#include "bench/model/model_switches.h"
#include "bench/model/request_map.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr int bitsOfDigit = 4;

/// What answers a word, beside the status.
struct Reply {
    bool isRead = false;
    std::uint64_t data = 0;
};

std::string hexadecimal(std::uint64_t value, int bits) {
    return fmt::format("{:0{}X}", value, (bits + bitsOfDigit - 1) / bitsOfDigit);
}

class ChipModel : public Chip {
public:
    ChipModel(chips::ChipPtr chip, std::string_view device)
        : store_(std::move(chip), device), format_(store_.chip().word), requests_(store_) {
        for (const std::string& name : store_.chip().modelParts)
            parts_.push_back(makeModelPart(name, store_));
        for (const auto& part : parts_)
            part->addSwitches(switches_);
        addModelSwitches(switches_, store_, parts_);
        switches_.add("Faults", {"Silent", "Output stuck high", "Flags stay"}, faults_);
    }

    void timeIs(std::int64_t now) override {
        for (const auto& part : parts_)
            part->timeIs(now);
    }
    void addPhase(Phase& phase) const override;
    void skip(std::int64_t duration) override {
        for (const auto& part : parts_)
            part->skip(duration);
    }
    [[nodiscard]] ChipLines lines() const override;
    DongleServices dongleServices() override;

    [[nodiscard]] const std::vector<ChipSwitch>& switches() const override {
        return switches_.switches();
    }
    [[nodiscard]] bool isOn(std::size_t index) const override {
        return switches_.bit(index).isOn();
    }
    void turn(std::size_t index, bool on) override;
    [[nodiscard]] std::vector<Reading> readings() const override;

protected:
    Shifted wordBegins(const BusShape&) override;
    [[nodiscard]] bool answerBit(std::size_t n) const override;
    void wordEnds(const Shifted& received, const BusShape&) override;

private:
    [[nodiscard]] StateBit fault(int bit) { return {&faults_, bit}; }
    [[nodiscard]] std::size_t length() const { return static_cast<std::size_t>(format_.bits); }
    [[nodiscard]] Shifted toBits(std::uint64_t word) const;
    [[nodiscard]] std::uint64_t status() const;
    [[nodiscard]] std::optional<Request> request(std::uint64_t word) const;
    [[nodiscard]] std::uint64_t shown(const ShownView& any) const;
    [[nodiscard]] Reply replyTo(const Request& request) const;
    [[nodiscard]] std::uint64_t answerTo(std::uint64_t word) const;
    [[nodiscard]] std::uint64_t composed(std::uint64_t word, const Reply& reply) const;

    void execute(const Request& request);
    void write(const Request& request);
    void read(const Request& request);

    ModelStore store_;
    const chips::WordFormat& format_;
    RequestMap requests_;
    std::vector<std::unique_ptr<ModelPart>> parts_;
    SwitchTable switches_;
    std::uint64_t faults_ = 0;
    const StateBit silent_ = fault(0);
    const StateBit stuckHigh_ = fault(1);
    const StateBit flagsStay_ = fault(2);

    bool taking_ = false;        ///< the chip accepts the word on its way
    std::uint64_t status_ = 0;   ///< as the word began
    Reply next_;                 ///< answers the word that comes, where answers do so
    std::uint64_t nextWord_ = 0; ///< the word that it answers
    std::string lastWord_ = "none";
    mutable std::optional<std::uint64_t> asked_; ///< what was on the line when it was last answered
    mutable std::uint64_t answered_ = 0;
};

void ChipModel::addPhase(Phase& phase) const {
    store_.addPhase(phase);
    for (const std::uint64_t value :
         {faults_, std::uint64_t{next_.isRead ? 1U : 0U}, next_.data, nextWord_})
        phase.push_back(static_cast<std::int64_t>(value));
    for (const auto& part : parts_)
        part->addPhase(phase);
}

ChipLines ChipModel::lines() const {
    ChipLines all;
    for (const auto& part : parts_) {
        const ChipLines lines = part->lines();
        all.interrupt = all.interrupt || lines.interrupt;
        all.reset = all.reset || lines.reset;
    }
    return all;
}

DongleServices ChipModel::dongleServices() {
    DongleServices all;
    for (const auto& part : parts_)
        std::ranges::move(part->dongleServices(), std::back_inserter(all));
    return all;
}

// Answers

Chip::Shifted ChipModel::toBits(std::uint64_t word) const {
    Shifted bits(length());
    for (std::size_t n = 0; n < bits.size(); ++n)
        bits[n] = (word >> (bits.size() - 1 - n) & 1) != 0;
    return bits;
}

std::uint64_t ChipModel::status() const {
    std::uint64_t all = store_.summary();
    for (const auto& part : parts_)
        all |= part->status().value_or(0);
    return all;
}

Chip::Shifted ChipModel::wordBegins(const BusShape&) {
    asked_.reset();
    taking_ =
        !silent_.isOn() && !stuckHigh_.isOn() &&
        std::all_of(parts_.begin(), parts_.end(), [](const auto& part) { return part->listens(); });
    if (stuckHigh_.isOn())
        return Shifted(length(), true);
    if (!taking_)
        return {};
    status_ = status();
    return format_.answersNext ? toBits(composed(nextWord_, next_)) : Shifted{};
}

bool ChipModel::answerBit(std::size_t n) const {
    if (!taking_ || format_.answersNext || n >= length())
        return ShiftDevice::answerBit(n);
    const std::uint64_t word = requestWord(length());
    if (asked_ != word) {
        answered_ = answerTo(word);
        asked_ = word;
    }
    return (answered_ >> (length() - 1 - n) & 1) != 0;
}

std::optional<Request> ChipModel::request(std::uint64_t word) const {
    std::uint64_t understood = word;
    for (const auto& part : parts_)
        understood = part->understood(understood);
    std::optional<Request> request = requests_.request(understood);
    if (request)
        request->word = word;
    return request;
}

std::uint64_t ChipModel::shown(const ShownView& any) const {
    for (const auto& part : parts_)
        if (const auto made = part->shown(*any.view))
            return *made;
    const bool hidden = any.owner->access == chips::Access::WriteOnly && !any.view->ownValue();
    return hidden ? 0 : *any.value;
}

Reply ChipModel::replyTo(const Request& request) const {
    const ShownView* view = nullptr;
    if (request.operation == chips::Operation::Write) {
        const chips::Register* written = requests_.registerOf(request);
        view = written != nullptr ? requests_.replyOf(*written) : nullptr;
        if (view == nullptr)
            return {};
    } else {
        view = requests_.viewOf(request);
    }
    return {.isRead = true, .data = view != nullptr ? shown(*view) : 0};
}

std::uint64_t ChipModel::answerTo(std::uint64_t word) const {
    const std::optional<Request> known = request(word);
    return composed(word, known ? replyTo(*known) : Reply{});
}

std::uint64_t ChipModel::composed(std::uint64_t word, const Reply& reply) const {
    std::uint64_t answer =
        reply.isRead ? (status_ & format_.statusOfRead.mask()) | format_.data.placed(reply.data)
                     : status_;
    for (const auto& part : parts_)
        answer = part->answer(word, answer);
    return format_.check.sealed(answer);
}

// Words

void ChipModel::wordEnds(const Shifted& received, const BusShape&) {
    if (!taking_ || received.empty())
        return;
    if (received.size() != length()) {
        lastWord_ = fmt::format("{} bits, ignored", received.size());
        for (const auto& part : parts_)
            part->hadWrongLength();
        return;
    }
    const std::uint64_t word = requestWord(length());
    lastWord_ = hexadecimal(word, format_.bits);
    nextWord_ = word;
    next_ = {};
    const std::optional<Request> known = request(word);
    if (format_.check.sealed(word) != word) {
        lastWord_ += ", wrong check";
    } else if (known) {
        next_ = replyTo(*known);
        execute(*known);
    } else {
        lastWord_ += ", unknown";
    }
}

void ChipModel::execute(const Request& request) {
    for (const auto& part : parts_)
        if (!part->accepts(request))
            return;
    if (request.operation == chips::Operation::Write)
        write(request);
    else
        read(request);
}

void ChipModel::write(const Request& request) {
    const chips::Register* written = requests_.registerOf(request);
    if (written == nullptr)
        return;
    std::uint64_t& value = store_.of(*written);
    const std::uint64_t data = request.data & written->mask();
    std::optional<std::uint64_t> left =
        written->access == chips::Access::WriteOneClears
            ? value & ~data
            : (value & written->neverWritten) | (data & ~written->neverWritten);
    for (const auto& part : parts_)
        if (left)
            left = part->written(*written, *left);
    value = left.value_or(value);
}

void ChipModel::read(const Request& request) {
    const ShownView* view = requests_.viewOf(request);
    if (view == nullptr)
        return;
    if (view->view->clears && !flagsStay_.isOn())
        *view->value = 0;
    for (const auto& part : parts_)
        part->wasRead(*view->view);
}

// The user

void ChipModel::turn(std::size_t index, bool on) {
    const StateBit& bit = switches_.bit(index);
    bit.set(on);
    for (const auto& part : parts_)
        part->turned(bit);
}

std::vector<Reading> ChipModel::readings() const {
    std::vector<Reading> all;
    for (const auto& part : parts_)
        std::ranges::move(part->readings(), std::back_inserter(all));
    all.push_back({"State", "Last word", lastWord_});
    for (const chips::Register& owner : store_.chip().registers) {
        const ShownView* plain = requests_.plainViewOf(owner);
        const bool readable = plain != nullptr && owner.access != chips::Access::WriteOnly;
        const std::uint64_t value = readable ? shown(*plain) : store_.of(owner);
        all.push_back({"Registers", owner.title, hexadecimal(value, owner.width())});
    }
    return all;
}

} // namespace

std::unique_ptr<Chip> makeChipModel(chips::ChipPtr chip, std::string_view device) {
    return std::make_unique<ChipModel>(std::move(chip), device);
}

} // namespace bitlux
