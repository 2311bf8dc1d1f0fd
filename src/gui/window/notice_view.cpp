#include "gui/window/notice_view.h"

#include "gui/desktop/theme.h"

#include <algorithm>
#include <utility>

#include <QHBoxLayout>
#include <QPainter>

namespace bitlux::gui {

namespace {

constexpr int noticeBarWidth = 4; ///< pixels of the coloured bar in front of the sentence

} // namespace

NoticeView::NoticeView(StatusNotices& notices, std::function<void()> pressed, QWidget* parent)
    : QWidget(parent),
      notices_(notices),
      pressed_(std::move(pressed)),
      text_(new ElidedLabel(this)),
      button_(new QPushButton(this)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(noticeBarWidth + 8, 1, 6, 1);
    row->setSpacing(8);
    row->addWidget(text_, 1);
    row->addWidget(button_);
    text_->setObjectName("notice.text");
    button_->setObjectName("notice.button");
    button_->setAutoDefault(false);
    connect(button_, &QPushButton::clicked, this, [this] {
        notices_.press();
        pressed_();
    });
    hide();
}

void NoticeView::follow() {
    const std::optional<Notice> notice = notices_.now();
    setVisible(notice.has_value());
    if (!notice)
        return;
    constexpr int longest = 46; // characters that are always visible
    const QString text = QString::fromStdString(notice->text);
    if (text_->text() != text) {
        text_->setText(text);
        text_->setMinimumWidth(0); // the size hint includes the previous minimum
        text_->setMinimumWidth(
            std::min(text_->sizeHint().width(), text_->fontMetrics().averageCharWidth() * longest));
    }
    QString caption = QString::fromStdString(notice->button);
    button_->setVisible(!caption.isEmpty());
    button_->setText(caption.replace('&', "&&"));
}

void NoticeView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(QRect(0, 2, noticeBarWidth, height() - 4), changedColor());
}

} // namespace bitlux::gui
