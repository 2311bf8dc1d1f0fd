#pragma once

#include <optional>
#include <vector>

#include <QRadioButton>
#include <QStringList>

namespace bitlux::gui {

/// The columns of the words of texts, below column headings.
class ColumnPlaces {
public:
    ColumnPlaces(QStringList heads, const QFontMetrics& metrics);

    [[nodiscard]] const QStringList& heads() const { return heads_; }
    /// left of the column, in pixels
    [[nodiscard]] int left(qsizetype column) const;
    [[nodiscard]] int width() const { return left(heads_.size()); }

private:
    QStringList heads_;
    std::vector<int> widths_;
};

/// An option of a field. A long text is wrapped into several lines; below column headings each word
/// of the text is in its column.
class ChoiceOption : public QRadioButton {
public:
    explicit ChoiceOption(QWidget* parent) : QRadioButton(parent) {}

    /// To be called after the text is set.
    void setColumns(const ColumnPlaces& columns);
    /// Width left of the texts.
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

/// The column headings, above options that begin `indent` further to the right.
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
