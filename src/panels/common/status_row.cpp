#include "panels/common/status_row.h"

namespace bitlux {

StatusRow::StatusRow(const chips::WordFormat& format, PanelControls& controls, PanelWords& words)
    : words_(words) {
    if (!format.status.exists() || format.status.captions.empty())
        return;
    row_ = &controls.addRow(format.status);
    words.answered = [this](const chips::BitList& part) { show(part); };
}

void StatusRow::show(const chips::BitList& part) const {
    if (row_ == nullptr)
        return;
    const std::uint64_t answer = words_.answer();
    for (int bit = 0; bit < row_->size(); ++bit)
        if (part.empty() || part.has(bit))
            row_->set(bit, (answer >> bit & 1) != 0);
}

} // namespace bitlux
