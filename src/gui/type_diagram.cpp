#include "gui/type_diagram.h"

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

TypePicture::Content contentOf(int spiType, bool msbFirst) {
    const ClockingType& type = clockingType(spiType);
    TypePicture::Content content{.timing = typeTiming(type, msbFirst),
                                 .sameEdge = type.valid == type.toggled,
                                 .caption = msbFirst ? "MSB first" : "LSB first"};
    if (type.skipsTopElement)
        content.caption += QString(", CLK stays %1 after bit %2")
                               .arg(type.steps[1] == BusStep::ClockHigh ? "high" : "low")
                               .arg(TypeTiming::bits - 1);
    return content;
}

} // namespace

TypeDiagram::TypeDiagram(int spiType, QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    setType(spiType, true);
}

void TypeDiagram::setType(int spiType, bool msbFirst) {
    content_ = contentOf(spiType, msbFirst);
    setAccessibleName(QString("Timing of SPI type %1").arg(spiType));
    setAccessibleDescription(accessibleName() + ": " + inWords(clockingType(spiType)) + "; " +
                             content_.caption);
    update();
}

QSize TypeDiagram::sizeHint() const {
    return minimumSizeHint().expandedTo(usualSize);
}

QSize TypeDiagram::minimumSizeHint() const {
    // That of the largest, so that nothing around it moves when the type changes.
    QSize size;
    for (int type = 1; type <= 8; ++type)
        for (const bool msbFirst : {false, true})
            size = size.expandedTo(TypePicture::minimumSize(font(), contentOf(type, msbFirst)));
    return size;
}

void TypeDiagram::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    TypePicture(painter, *this, content_).paint();
}

} // namespace bitlux::gui
