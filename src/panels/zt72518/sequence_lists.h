#pragma once

#include "panels/common/sequence_file.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "platform/forms/text_lines.h"

#include <memory>
#include <string>

namespace bitlux::zt72518 {

/// The lists of the sequence: commands and values in step, the answers of a run beside them, and
/// line numbers with an arrow. Row 0 of the first four has headers and stays; the commands are in
/// the rows from 1 on.
class SequenceLists {
public:
    static constexpr const char* commandHeader = "Commands";
    static constexpr const char* valueHeader = "Value in Hexa";

    explicit SequenceLists(forms::Form& form);

    /// Number of the last command, 0 when there is none.
    [[nodiscard]] int last() const { return static_cast<int>(commands_->size()) - 1; }
    /// Both raise Failure (OutOfRange) beyond the last row.
    [[nodiscard]] std::string command(int row) const;
    [[nodiscard]] std::string value(int row) const;

    void append(const std::string& command, const std::string& value);
    // Rows from 1 to last(), to last() + 1 for insert; the selection goes along with its line.
    void insert(int row, const std::string& command, const std::string& value);
    void remove(int row);
    void move(int from, int to);
    void setValue(int row, const std::string& value);
    /// Takes rows with their headers, and clears the answers.
    void assign(SequenceRows rows);
    /// Headers alone, in all lists.
    void clear();

    /// A run begins: no answers, and the arrow at the first command.
    void restart();
    void pointTo(int row);
    /// Texts of the high and of the low byte, or nothing for a command without an answer.
    void addAnswer(const std::string& high = {}, const std::string& low = {});
    /// Takes out the answers in rows `from` to `to`, as far as they are there.
    void removeAnswers(int from, int to);

    [[nodiscard]] const forms::LineSource& commands() const { return *commands_; }
    [[nodiscard]] const forms::LineSource& values() const { return *values_; }

private:
    class LineNumbers;

    void clearAnswers();

    std::shared_ptr<forms::TextLines> commands_ = std::make_shared<forms::TextLines>();
    std::shared_ptr<forms::TextLines> values_ = std::make_shared<forms::TextLines>();
    std::shared_ptr<forms::TextLines> highBytes_ = std::make_shared<forms::TextLines>();
    std::shared_ptr<forms::TextLines> lowBytes_ = std::make_shared<forms::TextLines>();
    std::shared_ptr<LineNumbers> numbers_;

public:
    forms::ListBox List_Commands;
    forms::ListBox List_Value;
    forms::ListBox List_Val_read1; ///< high bytes
    forms::ListBox List_Val_read0; ///< low bytes
    forms::ListBox List1;
};

} // namespace bitlux::zt72518
