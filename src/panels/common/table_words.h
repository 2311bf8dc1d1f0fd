#pragma once

#include "panels/common/register_words.h"
#include "session/session.h"
#include "transfer/word_engine.h"

#include <functional>
#include <string>

namespace bitlux {

/// Words as a format tells, sent bit by bit in the length that is in force; a chip without words of
/// its own needs no more.
class TableWords : public RegisterWords {
public:
    using Append = std::function<void(const std::string& name, const std::string& value)>;

    /// All outlive it; `append` adds a line to the sequence.
    TableWords(const oldchips::WordFormat& format, Session& session, WordEngine& engine,
               Append append)
        : format_(format), session_(session), engine_(engine), append_(std::move(append)) {}

    void write(const oldchips::Register& target, std::uint32_t data) override;
    std::uint32_t read(const oldchips::Register& source, RegisterView view) override;
    void append(const std::string& name, const std::string& value) override {
        append_(name, value);
    }
    [[nodiscard]] std::string writeText(const oldchips::Register& target) const override;
    [[nodiscard]] std::string readText(const oldchips::Register& source,
                                       RegisterView view) const override;

private:
    void send(std::uint32_t word);
    [[nodiscard]] std::string text(std::uint32_t word) const;

    const oldchips::WordFormat& format_;
    Session& session_;
    WordEngine& engine_;
    Append append_;
};

} // namespace bitlux
