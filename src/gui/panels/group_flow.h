#pragma once

#include <memory>
#include <vector>

#include <QLayout>

namespace bitlux::gui {

/// Groups side by side for as long as there is room, then in the next row; those of a row are
/// equally high, and share its width where the spare room is shared; few that are left over in the
/// last row stand below those above them.
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
    /// Of all groups in a row where the spare room is left, else as the least.
    [[nodiscard]] QSize sizeHint() const override;
    /// Of the widest group.
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
    /// Of the groups of a row that is so wide.
    [[nodiscard]] std::vector<int> widthsIn(const Row& row, int width) const;
    static int heightOf(const Row& row, const std::vector<int>& widths);
    static int widthOfRest(const Row& row, int width, std::size_t above);

    Spare spare_;
    std::vector<std::unique_ptr<QLayoutItem>> items_;
};

} // namespace bitlux::gui
