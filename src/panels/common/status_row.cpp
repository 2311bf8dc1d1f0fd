#include "panels/common/status_row.h"

namespace bitlux {

StatusRow::StatusRow(const chips::WordFormat& format, PanelControls& controls, PanelWords& words)
    : words_(words), first_(format.statusFirst) {
    if (!format.status.exists() || format.status.captions.empty())
        return;
    row_ = &controls.addRow(format.status);
    words.answered = [this](const chips::BitList& part) { show(part); };
}

void StatusRow::show(const chips::BitList& part) const {
    if (row_ == nullptr)
        return;
    const std::uint64_t answer = words_.answer();
    for (int label = 0; label < row_->size(); ++label)
        if (const int bit = first_ + label; part.empty() || part.has(bit))
            row_->set(label, (answer >> bit & 1) != 0);
}

} // namespace bitlux
