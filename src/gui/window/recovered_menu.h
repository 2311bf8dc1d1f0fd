#pragma once

#include "config/recovered_files.h"

#include <functional>
#include <vector>

#include <QMenu>

namespace bitlux::gui {

/// The unsaved work that was kept, read when the menu opens.
class RecoveredMenu : public QMenu {
public:
    RecoveredMenu(std::function<std::vector<RecoveredFile>()> files,
                  std::function<void(const RecoveredFile& file)> open, QWidget* parent);

private:
    void fill();
    void addFile(int number, const RecoveredFile& file);

    std::function<std::vector<RecoveredFile>()> files_;
    std::function<void(const RecoveredFile&)> open_;
};

} // namespace bitlux::gui
