#pragma once

#include "gui/panels/panel_widgets.h"

#include <cstdint>
#include <vector>

#include <QGridLayout>

namespace bitlux::gui {

/// Rows of bits, one below the other, each with its buttons before it. Callers add the widgets in
/// reading order, which is the tab order.
class RowGrid : public QGridLayout {
public:
    /// The beginning of a row of bits.
    struct Start {
        QWidget* first = nullptr;
        QWidget* second = nullptr;
    };
    using Starts = std::vector<Start>;

    static constexpr std::uint64_t noFields = 0;

    /// Added widgets become children of `parent`.
    RowGrid(const PanelWidgets& widgets, QWidget* parent);

    void addTitle(const QString& text, qreal scale);
    void addNote(const std::string& text);
    /// The buttons that exist; `about` distinguishes those with equal captions.
    [[nodiscard]] Start buttons(const ControlRef& first, const ControlRef& second,
                                const QString& about);
    /// `fieldEdges` as in BitRow::markFields. `bits` may be null.
    void addRow(const Starts& starts, BitRow* bits, std::uint64_t fieldEdges = noFields);
    /// A row of the panel; null when a view that shares it shows it already.
    [[nodiscard]] BitRow* bits(const ControlRef& first, BitRow::Use use) const;
    [[nodiscard]] BitRow* bits(const std::vector<forms::Label*>& labels) const {
        return new BitRow(LabelRow(labels, {}), BitRow::Use::Shown, widgets_.binder, parent_);
    }
    /// A box for the value of a row of the panel.
    [[nodiscard]] QLineEdit* entry(const ControlRef& row, const chips::ControlName& box,
                                   const QString& name) const;
    /// Buttons that belong to no row. A single one is placed after those that append.
    void addButtons(const std::vector<chips::ControlName>& names);
    /// To be called after all rows: rows of the same number of bits get equal cells, and all values
    /// the same width.
    void alignCells() const;
    [[nodiscard]] bool hasRows() const { return !rows_.empty(); }
    [[nodiscard]] QWidget* owner() const { return parent_; }

private:
    // Each returns the number of lines it used.
    int addBelow(const Starts& starts, int line);
    int addSideBySide(const Starts& starts, int line);

    PanelWidgets widgets_;
    QWidget* parent_;
    bool hasButtons_ = false; ///< before any row
    std::vector<BitRow*> rows_;
};

} // namespace bitlux::gui
