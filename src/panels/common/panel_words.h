#pragma once

#include "chips/description.h"
#include "platform/desk.h"
#include "platform/event.h"
#include "session/flag.h"
#include "session/session.h"
#include "transfer/word_engine.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace bitlux {

/// The words of a panel.
class PanelWords {
public:
    /// What a word is sent for.
    enum class Purpose : std::uint8_t { Write, Read, Command };
    /// In which length, type and order of bits words go out, whatever the chip wants: in those of
    /// the chip, in those but for the type, or in those that the session holds in that moment.
    enum class Travel : std::uint8_t { InOwnShape, InTypeOfSession, InShapeOfSession };

    /// All outlive it.
    PanelWords(const chips::WordFormat& format, Session& session, WordEngine& engine,
               MessageBoxes& boxes, Travel travel = Travel::InOwnShape)
        : format_(format), session_(session), engine_(engine), boxes_(boxes), travel_(travel) {}

    [[nodiscard]] const chips::WordFormat& format() const { return format_; }

    /// Whether the session has the order of bits that the chip's words need.
    [[nodiscard]] bool hasOrder() const { return !format_.packed || session_.MSBFirst == ConstOn; }

    /// Sends a word as it is; false when it could not be sent as the chip wants it, which the user
    /// is told once. Another type than that of the chip is for words of its test side.
    bool send(std::uint64_t word, std::optional<std::int16_t> type = {});
    /// Puts a word into WordToSend, which then has at least as many elements as the chip's words
    /// and as those of the session.
    void fill(std::uint64_t word);
    /// Sends what WordToSend holds, in the shape of the session.
    void sendFilled();
    /// What came back last, bit i of the answer in bit i.
    [[nodiscard]] std::uint64_t answer() const;
    /// Elements of the answer that are 1, among the bits `low` to `low` + `count` - 1.
    [[nodiscard]] std::uint8_t answerByte(int low) const;

    /// Writes a register: data bits that are never written go out as 0.
    void write(const chips::Register& target, std::uint64_t data);
    /// The value of a view as the chip answered; 0 when nothing came.
    std::uint64_t read(const chips::View& view);
    void command(const chips::Command& command);

    /// The words that these send, before `adjust` looks at them.
    [[nodiscard]] std::uint64_t wordOf(const chips::Register& target, std::uint64_t data) const;
    [[nodiscard]] std::uint64_t wordOf(const chips::View& view) const;

    /// In hexadecimal, for tooltips; the data of a write is told as "xx".
    [[nodiscard]] std::string text(std::uint64_t word) const;
    [[nodiscard]] std::string text(const chips::Register& target) const;
    [[nodiscard]] std::string text(const chips::View& view) const { return text(wordOf(view)); }

    /// A word went out, and its answer is there.
    Event<std::uint64_t> exchanged;

    // Set by the parts of a panel.
    /// What is odd about a chip's words: gives back the word that is to be sent. The register is
    /// there for a write alone.
    std::function<std::uint64_t(Purpose, const chips::Register*, std::uint64_t word)> adjust;
    /// A word is about to be filled in, where words travel in the shape of the session.
    std::function<void()> starting = [] {};
    /// A word is through and its answer there: the bits of it that are status.
    std::function<void(const chips::BitList& status)> answered = [](const chips::BitList&) {};
    /// A hand has sent what a line of this name and value stands for.
    std::function<void(const chips::Line& line, const std::string& value)> sent =
        [](const chips::Line&, const std::string&) {};

private:
    class Shape;

    [[nodiscard]] bool sendable();
    bool sendAdjusted(Purpose purpose, const chips::Register* target, std::uint64_t word);
    void tellStatus(Purpose purpose);

    const chips::WordFormat& format_;
    Session& session_;
    WordEngine& engine_;
    MessageBoxes& boxes_;
    const Travel travel_;
    bool refused_ = false; ///< the user knows that nothing can be sent
};

} // namespace bitlux
