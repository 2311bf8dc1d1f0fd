#include "waveform/decoded_log.h"

#include "platform/text_file.h"

#include <array>

#include <fmt/format.h>

namespace bitlux {

namespace {

using Column = DecodedLog::Column;

std::string csvField(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos)
        return text;
    std::string quoted = "\"";
    for (const char c : text)
        quoted.append(c == '"' ? 2 : 1, c);
    return quoted + '"';
}

} // namespace

std::size_t DecodedLog::first() const {
    const SentWords* words = engine_.sentWords();
    return words == nullptr ? 0 : words->first();
}

std::size_t DecodedLog::end() const {
    const SentWords* words = engine_.sentWords();
    return words == nullptr ? 0 : words->end();
}

const char* DecodedLog::title(Column column) {
    constexpr std::array<const char*, columns> titles{
        "Time (ms)", "Bus", "Word", "Answer", "Meaning", "Meaning of the answer"};
    return titles.at(static_cast<std::size_t>(column));
}

std::string DecodedLog::text(std::size_t row, Column column) const {
    const SentWords& words = *engine_.sentWords();
    const SentWord& word = words.word(row);
    switch (column) {
    case Column::Time: {
        constexpr double nanosecondsOfMillisecond = 1e6;
        return fmt::format("{:.3f}", static_cast<double>(word.begin - words.origin()) /
                                         nanosecondsOfMillisecond);
    }
    case Column::Bus:
        return word.onDongle ? "Dongle" : "Port";
    case Column::Word: {
        const WordData data(word);
        return data.hexOf(data.sent);
    }
    case Column::Answer: {
        const WordData data(word);
        return data.hexOf(data.received);
    }
    case Column::Meaning:
    case Column::AnswerMeaning:
        break;
    }
    return meaningOf(row, column);
}

WordData DecodedLog::data(std::size_t row) const {
    return WordData(engine_.sentWords()->word(row));
}

std::string DecodedLog::meaningOf(std::size_t row, Column column) const {
    if (decoder_ == nullptr)
        return {};
    const WordData word = data(row);
    if (!decoder_->fits(word.length))
        return {};
    if (column == Column::Meaning)
        return decoder_->decode(WordData::numberOf(word.sent)).text();
    return decoder_->answerText(answered(row), WordData::numberOf(word.received));
}

/// The word that the answer in a row belongs to.
DecodedWord DecodedLog::answered(std::size_t row) const {
    if (decoder_->format().answersNext) {
        if (row == first())
            return {};
        --row;
    }
    const WordData word = data(row);
    return decoder_->fits(word.length) ? decoder_->decode(WordData::numberOf(word.sent))
                                       : DecodedWord{};
}

void DecodedLog::saveCsv(const std::string& fileName) const {
    replaceTextFile(fileName, [this](const auto& writeLine) {
        std::string line;
        const auto add = [&line](Column column, const std::string& text) {
            if (column != Column::Time)
                line += ',';
            const bool isWord = column == Column::Word || column == Column::Answer;
            line += isWord ? "0x" + text : csvField(text);
        };
        for (int column = 0; column < columns; ++column)
            line += (column == 0 ? "" : ",") + csvField(title(static_cast<Column>(column)));
        writeLine(line);
        for (std::size_t row = first(); row < end(); ++row) {
            line.clear();
            for (int column = 0; column < columns; ++column)
                add(static_cast<Column>(column), text(row, static_cast<Column>(column)));
            writeLine(line);
        }
    });
}

} // namespace bitlux
