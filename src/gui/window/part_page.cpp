#include "gui/window/part_page.h"

#include "gui/desktop/theme.h"

#include <QLabel>

namespace bitlux::gui {

namespace {

constexpr int firstPage = 3;

struct Text {
    const char* title;
    const char* purpose;
    forms::Button MainTabs::*open;
};

/// From page 3 on.
constexpr std::array<Text, 6> texts{{
    {"ZT72517 over its byte-wide link",
     "Each button sends the chip one byte through the dongle and shows the byte that comes back.",
     nullptr},
    {"ZT7251x family",
     "Registers, flags, watchdog and sequences of the system-basis chips. Words have 16 bits here.",
     &MainTabs::ZT72518_windows},
    {"ZT72361", "Registers, flags and watchdog of the CAN chip. Words have 8 bits here.",
     &MainTabs::open_72361},
    {"ZT72537",
     "Registers, flags and watchdog of the LIN system-basis chip. Words have 8 bits here.",
     &MainTabs::open_72537},
    {"ZT72516",
     "Rails, registers, watchdog and sequences of the multi-rail chip. Words have 32 bits here.",
     &MainTabs::OpenZT72516Window},
    {"A chip of your own", "Registers and sequences as the file of the chip describes them.",
     &MainTabs::OpenChipPanel},
}};

} // namespace

PartPage::PartPage(MainTabs& tabs, int page, QWidget& before, Binder& binder, QWidget* parent)
    : QWidget(parent),
      layout_(new QVBoxLayout(this)),
      runPlace_{.room = new QWidget(this), .before = &before} {
    const Text& text = texts.at(static_cast<std::size_t>(page - firstPage));
    layout_->setContentsMargins(0, 8, 0, 0);
    layout_->setSpacing(10);
    auto* title = new QLabel(text.title, this);
    title->setFont(scaled(title->font(), 1.15));
    layout_->addWidget(title);
    auto* purpose = new QLabel(text.purpose, this);
    purpose->setWordWrap(true);
    layout_->addWidget(purpose);
    if (text.open != nullptr) {
        auto* open = binder.make<QPushButton>(tabs.*text.open, this);
        open->setMinimumWidth(open->sizeHint().width() + 24);
        open->setMinimumHeight(open->fontMetrics().height() + 14);
        layout_->addWidget(open, 0, Qt::AlignLeft);
        runPlace_.before = open;
    }
    layout_->addWidget(runPlace_.room);
    layout_->addStretch();
}

void PartPage::add(QWidget& content, QWidget& last) {
    layout_->insertWidget(layout_->indexOf(runPlace_.room), &content);
    runPlace_.before = &last;
}

} // namespace bitlux::gui
