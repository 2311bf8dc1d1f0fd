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
    /// The purpose of a word.
    enum class Purpose : std::uint8_t { Write, Read, Command };
    /// Length, type and bit order of the words: those of the chip, those of the chip except for the
    /// type, or those of the session at that moment.
    enum class Travel : std::uint8_t { InOwnShape, InTypeOfSession, InShapeOfSession };

    /// All outlive it.
    PanelWords(const chips::WordFormat& format, Session& session, WordEngine& engine,
               MessageBoxes& boxes, Travel travel = Travel::InOwnShape)
        : format_(format), session_(session), engine_(engine), boxes_(boxes), travel_(travel) {}

    [[nodiscard]] const chips::WordFormat& format() const { return format_; }

    /// Whether the session has the bit order that the chip's words need.
    [[nodiscard]] bool hasOrder() const { return !format_.packed || session_.MSBFirst == ConstOn; }

    /// Sends a word unchanged; false when it cannot be sent in the chip's shape, which a message
    /// says once. A type other than the chip's is for its test words.
    bool send(std::uint64_t word, std::optional<std::int16_t> type = {});
    /// Writes a word to WordToSend, which then has at least as many elements as the words of the
    /// chip and of the session.
    void fill(std::uint64_t word);
    /// Sends what WordToSend holds, in the shape of the session.
    void sendFilled();
    /// The last answer, bit i of the answer in bit i.
    [[nodiscard]] std::uint64_t answer() const;
    /// Elements of the answer that are 1, among the bits `low` to `low` + `count` - 1.
    [[nodiscard]] std::uint8_t answerByte(int low) const;

    /// Writes a register: data bits that are never written are sent as 0.
    void write(const chips::Register& target, std::uint64_t data);
    /// The value of a view in the chip's answer; 0 without an answer.
    std::uint64_t read(const chips::View& view);
    void command(const chips::Command& command);
    // The same for the program's own purposes: neither recorded nor reported as read or written.
    void put(const chips::Register& target, std::uint64_t data);
    std::uint64_t fetch(const chips::View& view);

    /// The words that these send, before `adjust`.
    [[nodiscard]] std::uint64_t wordOf(const chips::Register& target, std::uint64_t data) const;
    [[nodiscard]] std::uint64_t wordOf(const chips::View& view) const;

    /// In hexadecimal, for tooltips; the data of a write is shown as "xx".
    [[nodiscard]] std::string text(std::uint64_t word) const;
    [[nodiscard]] std::string text(const chips::Register& target) const;
    [[nodiscard]] std::string text(const chips::View& view) const { return text(wordOf(view)); }

    /// A word was sent and answered.
    Event<std::uint64_t> exchanged;

    // Set by the parts of a panel.
    /// Changes a word as the chip requires, and returns the word to send. The register is only set
    /// for a write.
    std::function<std::uint64_t(Purpose, const chips::Register*, std::uint64_t word)> adjust;
    /// A word is about to be filled in, when words use the shape of the session.
    std::function<void()> starting = [] {};
    /// A word was answered: the status bits of the answer.
    std::function<void(const chips::BitList& status)> answered = [](const chips::BitList&) {};
    /// A register was written, a view was read.
    std::function<void(const chips::Register& target)> wasWritten = [](const chips::Register&) {};
    std::function<void(const chips::View& view)> wasRead = [](const chips::View&) {};
    /// The user has sent what a line with this name and value means.
    std::function<void(const chips::Line& line, const std::string& value)> sent =
        [](const chips::Line&, const std::string&) {};

private:
    class Shape;

    [[nodiscard]] bool sendable();
    bool sendAdjusted(Purpose purpose, const chips::Register* target, std::uint64_t word);
    void reportStatus(Purpose purpose);

    const chips::WordFormat& format_;
    Session& session_;
    WordEngine& engine_;
    MessageBoxes& boxes_;
    const Travel travel_;
    bool refused_ = false; ///< the message that nothing can be sent was shown
};

} // namespace bitlux
