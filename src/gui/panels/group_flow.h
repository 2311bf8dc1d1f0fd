#pragma once

#include <memory>
#include <vector>

#include <QLayout>

namespace bitlux::gui {

/// Groups beside each other as far as they fit, then in the next row. Groups of a row have the same
/// height, and share its width if the spare width is shared. The groups of an incomplete last row
/// are placed below those above them.
class GroupFlow : public QLayout {
public:
    enum class Spare { Shared, Left };

    explicit GroupFlow(Spare spare = Spare::Shared) : spare_(spare) {}
    ~GroupFlow() override;

    void addItem(QLayoutItem* item) override { items_.emplace_back(item); }
    [[nodiscard]] int count() const override { return static_cast<int>(items_.size()); }
    [[nodiscard]] QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;

    [[nodiscard]] Qt::Orientations expandingDirections() const override { return {}; }
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    /// All groups in one row if the spare width is left, else the minimum size.
    [[nodiscard]] QSize sizeHint() const override;
    /// The size of the widest group.
    [[nodiscard]] QSize minimumSize() const override;
    void setGeometry(const QRect& rect) override;

private:
    using Row = std::vector<QLayoutItem*>; ///< those that are not hidden

    struct Line {
        Row row;
        std::vector<int> widths;
        int height;
    };

    [[nodiscard]] std::vector<Row> rowsIn(int width) const;
    [[nodiscard]] std::vector<Line> linesIn(int width) const;
    /// Widths of the groups in a row of this width.
    [[nodiscard]] std::vector<int> widthsIn(const Row& row, int width) const;
    static int heightOf(const Row& row, const std::vector<int>& widths);
    static int widthOfRest(const Row& row, int width, std::size_t above);

    Spare spare_;
    std::vector<std::unique_ptr<QLayoutItem>> items_;
};

} // namespace bitlux::gui
