#pragma once

#include "gui/panels/panel_widgets.h"

#include <cstdint>
#include <vector>

#include <QGridLayout>

namespace bitlux::gui {

/// Rows of bits below each other, each with its buttons in front. Whoever adds to it makes the
/// widgets in the order in which they are read, for the tabulator key.
class RowGrid : public QGridLayout {
public:
    /// A line in front of a row of bits.
    struct Start {
        QWidget* first = nullptr;
        QWidget* second = nullptr;
    };
    using Starts = std::vector<Start>;

    static constexpr std::uint64_t noFields = 0;

    /// What is added becomes a child of `parent`.
    RowGrid(const PanelWidgets& widgets, QWidget* parent);

    void addTitle(const QString& text, qreal scale);
    void addNote(const std::string& text);
    /// The buttons that exist; `about` tells those from others that look alike.
    [[nodiscard]] Start buttons(const ControlRef& first, const ControlRef& second,
                                const QString& about);
    /// `fieldEdges` as BitRow::markFields takes it. `bits` may be null.
    void addRow(const Starts& starts, BitRow* bits, std::uint64_t fieldEdges = noFields);
    /// A row of the panel; null when it is in sight already, with a view that shares it.
    [[nodiscard]] BitRow* bits(const ControlRef& first, BitRow::Use use) const;
    [[nodiscard]] BitRow* bits(const std::vector<forms::Label*>& labels) const {
        return new BitRow(LabelRow(labels, {}), BitRow::Use::Shown, widgets_.binder, parent_);
    }
    /// A box for the value of the row of a panel.
    [[nodiscard]] QLineEdit* entry(const ControlRef& row, const chips::ControlName& box,
                                   const QString& name) const;
    /// Buttons that belong to no row. A single one stands behind those that append.
    void addButtons(const std::vector<chips::ControlName>& names);
    /// To be called once all rows are there: those with as many bits have equal cells,
    /// and all values have the same room.
    void alignCells() const;
    [[nodiscard]] bool hasRows() const { return !rows_.empty(); }
    [[nodiscard]] QWidget* owner() const { return parent_; }

private:
    // Each gives back how many lines it took.
    int addBelow(const Starts& starts, int line);
    int addSideBySide(const Starts& starts, int line);

    PanelWidgets widgets_;
    QWidget* parent_;
    bool hasButtons_ = false; ///< in front of some row
    std::vector<BitRow*> rows_;
};

} // namespace bitlux::gui
