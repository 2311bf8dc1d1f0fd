#pragma once

#include <optional>
#include <vector>

#include <QRadioButton>
#include <QStringList>

namespace bitlux::gui {

/// Where the words of texts stand below the heads of columns.
class ColumnPlaces {
public:
    ColumnPlaces(QStringList heads, const QFontMetrics& metrics);

    [[nodiscard]] const QStringList& heads() const { return heads_; }
    /// In front of the column, in pixels.
    [[nodiscard]] int left(qsizetype column) const;
    [[nodiscard]] int width() const { return left(heads_.size()); }

private:
    QStringList heads_;
    std::vector<int> widths_;
};

/// An option of a field. A long text stands in several lines; below the heads of columns each word
/// of the text has its column.
class ChoiceOption : public QRadioButton {
public:
    explicit ChoiceOption(QWidget* parent) : QRadioButton(parent) {}

    /// To be told once the text is there.
    void setColumns(const ColumnPlaces& columns);
    /// In front of the texts.
    [[nodiscard]] int indent() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override { return naturalWidth() > longestLine(); }
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    [[nodiscard]] bool hitButton(const QPoint& place) const override {
        return rect().contains(place);
    }

private:
    [[nodiscard]] QStringList words() const { return text().split(' ', Qt::SkipEmptyParts); }
    [[nodiscard]] int naturalWidth() const;
    [[nodiscard]] int longestLine() const;
    [[nodiscard]] QRect textIn(int width) const;

    std::optional<ColumnPlaces> columns_;
};

/// The heads of columns, above options that begin `indent` further to the right.
class ColumnHeads : public QWidget {
public:
    ColumnHeads(ColumnPlaces columns, int indent, QWidget* parent);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    ColumnPlaces columns_;
    int indent_;
};

} // namespace bitlux::gui
