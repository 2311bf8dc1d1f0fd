#pragma once

#include "program/word_copies.h"

#include <functional>
#include <vector>

class QLineEdit;
class QTableView;

namespace bitlux::gui {

class LogView;

// Words of a widget are copied as Python, as a command line and as C bytes: by its context menu,
// and by Ctrl+Shift+P, Ctrl+Shift+L and Ctrl+Shift+B. `words` returns none where there are none to
// copy. The menu is made when it opens; `copies` outlives the widget.

/// Of the selected line.
void addCopyMenu(LogView& list, const WordCopies& copies,
                 std::function<std::vector<CopiedWord>(int line)> words);
/// Behind what the menu of the field has.
void addCopyMenu(QLineEdit& field, const WordCopies& copies,
                 std::function<std::vector<CopiedWord>()> words);
/// Of the selected rows; `copy` is what Ctrl+C does.
void addCopyMenu(QTableView& table, const WordCopies& copies,
                 std::function<std::vector<CopiedWord>()> words, std::function<void()> copy);

} // namespace bitlux::gui
