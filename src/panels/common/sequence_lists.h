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

/// The lists of a sequence: commands and values in step, the answers of a run beside them, and line
/// numbers with an arrow. Row 0 of all but the numbers has headers and stays; the commands are in
/// the rows from 1 on.
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
    // Rows from 1 to last(), to last() + 1 for insert. What is selected goes along with its line;
    // of a line that is removed the next one takes the place, in the commands alone.
    void insert(int row, const std::string& command, const std::string& value);
    void remove(int row);
    void move(int from, int to);
    void setValue(int row, const std::string& value);
    /// Takes rows with their headers, and clears the answers. Nothing is selected then, or the last
    /// row is.
    void assign(SequenceRows rows);
    void assignAndSelectLast(SequenceRows rows);
    /// Headers alone, in all lists.
    void clear();

    /// A run begins: no answers, and the arrow at the first command, or nowhere yet.
    void restart();
    /// The arrow goes to the row of a line that is played, or to the next one.
    void showPlayed(int line);
    void pointTo(int row);
    /// A run goes back from line `from` to line `to`: `text` stands for the number of `from` from
    /// now on, and the row in front of `to` gets its number anew.
    void goBack(int from, const std::string& text, int to);
    /// A text for each list of answers; those that are missing are empty.
    void addAnswer(const std::vector<std::string>& texts);
    /// Takes out the answers in rows `from` to `to`, as far as they are there.
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
