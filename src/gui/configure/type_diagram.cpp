#include "gui/configure/type_diagram.h"

namespace bitlux::gui {

namespace {

constexpr QSize usualSize(520, 190);

const char* nameOf(Edge edge) {
    return edge == Edge::Rising ? "rising" : "falling";
}

QString inWords(const ClockingType& type) {
    QString text = type.valid == type.toggled
                       ? QString("data is valid and toggled on the %1 edge of CLK, DO is read just "
                                 "before it")
                             .arg(nameOf(type.valid))
                       : QString("data is valid on the %1 edge of CLK, toggled on the %2 edge")
                             .arg(nameOf(type.valid), nameOf(type.toggled));
    text += QString(", CLK idles %1").arg(type.idle != 0 ? "high" : "low");
    return text;
}

TypePicture::Content contentOf(int spiType, WordLook look) {
    const ClockingType& type = clockingType(spiType);
    TypePicture::Content content{.timing = typeTiming(type, look.msbFirst),
                                 .sameEdge = type.valid == type.toggled,
                                 .selectedWhenHigh = look.selectedWhenHigh,
                                 .caption = look.msbFirst ? "MSB first" : "LSB first"};
    if (const std::optional<int> mode = spiMode(type))
        content.caption = QString("SPI mode %1, ").arg(*mode) + content.caption;
    if (type.skipsTopElement)
        content.caption += QString(", CLK stays %1 after bit %2")
                               .arg(type.steps[1] == BusStep::ClockHigh ? "high" : "low")
                               .arg(TypeTiming::bits - 1);
    return content;
}

} // namespace

TypeDiagram::TypeDiagram(int spiType, QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    setType(spiType, {});
}

void TypeDiagram::setType(int spiType, WordLook look) {
    content_ = contentOf(spiType, look);
    setAccessibleName(QString("Timing of SPI type %1").arg(spiType));
    setAccessibleDescription(QString("%1: %2; %3; CS is %4 within the word")
                                 .arg(accessibleName(), inWords(clockingType(spiType)),
                                      content_.caption, look.selectedWhenHigh ? "high" : "low"));
    update();
}

QSize TypeDiagram::sizeHint() const {
    return minimumSizeHint().expandedTo(usualSize);
}

QSize TypeDiagram::minimumSizeHint() const {
    // The size of the largest, so that nothing around it moves when the type changes.
    QSize size;
    for (int type = 1; type <= 8; ++type)
        for (const bool msbFirst : {false, true})
            size = size.expandedTo(
                TypePicture::minimumSize(font(), contentOf(type, {.msbFirst = msbFirst})));
    return size;
}

void TypeDiagram::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    TypePicture(painter, *this, content_).paint();
}

} // namespace bitlux::gui
