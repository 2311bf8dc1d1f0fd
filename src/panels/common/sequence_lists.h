#pragma once

#include "chips/description.h"
#include "panels/common/sequence_file.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "platform/forms/text_lines.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace bitlux {

/// The lists of a sequence: commands and values in parallel, the answers of a run beside them, and
/// line numbers with an arrow. Row 0 of all but the numbers has headers and is never removed; the
/// commands are in the rows from 1 on.
class SequenceLists {
public:
    static constexpr std::string_view commandHeader = "Commands";

    SequenceLists(forms::Form& form, const chips::SequenceStyle& style);

    /// Number of the last command, 0 when there is none.
    [[nodiscard]] int last() const { return static_cast<int>(commands_->size()) - 1; }
    /// Both raise Failure (OutOfRange) beyond the last row.
    [[nodiscard]] std::string command(int row) const;
    [[nodiscard]] std::string value(int row) const;

    void append(const std::string& command, const std::string& value);
    // Rows from 1 to last(), to last() + 1 for insert. The selection moves with its line. After the
    // removal of a selected line the next one is selected, in the commands only.
    void insert(int row, const std::string& command, const std::string& value);
    void remove(int row);
    void move(int from, int to);
    void setValue(int row, const std::string& value);
    /// Replaces the rows including the headers, and clears the answers. Then nothing is selected,
    /// or the last row.
    void assign(SequenceRows rows);
    void assignAndSelectLast(SequenceRows rows);
    /// Leaves only the headers, in all lists.
    void clear();

    /// A run begins: clears the answers, and sets the arrow to the first command or removes it.
    void restart();
    /// Moves the arrow to the row of the played line, or to the next one.
    void showPlayed(int line);
    void pointTo(int row);
    /// A run jumps back from line `from` to line `to`: `text` replaces the number of `from`, and
    /// the row before `to` gets its number again.
    void goBack(int from, const std::string& text, int to);
    /// A text for each list of answers; missing ones are empty.
    void addAnswer(const std::vector<std::string>& texts);
    /// Removes the answers in rows `from` to `to`, as far as they exist.
    void removeAnswers(int from, int to);

    [[nodiscard]] const forms::LineSource& commands() const { return *commands_; }
    [[nodiscard]] const forms::LineSource& values() const { return *values_; }
    /// The list of a column of answers.
    [[nodiscard]] forms::ListBox& answers(std::size_t column) const {
        return answers_.at(column)->list;
    }
    [[nodiscard]] std::size_t columns() const { return answers_.size(); }
    [[nodiscard]] const std::string& valueHeader() const { return valueHeader_; }

private:
    class LineNumbers;
    struct Answers {
        Answers(forms::Form& form, const chips::SequenceStyle::Column& column);

        std::string header;
        std::shared_ptr<forms::TextLines> lines;
        forms::ListBox list;
    };

    void clearAnswers();

    std::shared_ptr<forms::TextLines> commands_ = std::make_shared<forms::TextLines>();
    std::shared_ptr<forms::TextLines> values_ = std::make_shared<forms::TextLines>();
    std::shared_ptr<LineNumbers> numbers_;
    std::string valueHeader_;
    const bool arrowAtLine_;

public:
    forms::ListBox List_Commands;
    forms::ListBox List_Value;
    forms::ListBox List1;

private:
    std::vector<std::unique_ptr<Answers>> answers_;
};

} // namespace bitlux
