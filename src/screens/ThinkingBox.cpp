#include "screens/ThinkingBox.h"

#include "screens/Look.h"
#include "screens/Style.h"

#include <QApplication>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>

#include <cmath>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

constexpr int linesInBox = 5;
constexpr int notch = 120; ///< what a wheel tells of one step (QWheelEvent::angleDelta)

/// From one line to the next, at the size of text that the person has chosen.
int lineHeight(const Look &look) {
    const double usual = fontOf(TextStyle::callout, {}).pixelSize();
    return qRound(style::thinkingLine * look.font(TextStyle::callout).pixelSize() / usual);
}

std::optional<QScrollBar::SliderAction> scrollBy(int key) {
    switch (key) {
    case Qt::Key_Up:
        return QScrollBar::SliderSingleStepSub;
    case Qt::Key_Down:
        return QScrollBar::SliderSingleStepAdd;
    case Qt::Key_PageUp:
        return QScrollBar::SliderPageStepSub;
    case Qt::Key_PageDown:
        return QScrollBar::SliderPageStepAdd;
    case Qt::Key_Home:
        return QScrollBar::SliderToMinimum;
    case Qt::Key_End:
        return QScrollBar::SliderToMaximum;
    default:
        return std::nullopt;
    }
}

} // namespace

ThinkingBox::ThinkingBox(const Look &look, QWidget *parent)
    : RowButton(look, {}, parent),
      m_bar(new QScrollBar(Qt::Vertical, this)) {
    setCursor(Qt::PointingHandCursor);
    m_bar->setCursor(Qt::ArrowCursor);
    connect(m_bar, &QScrollBar::valueChanged, this, qOverload<>(&QWidget::update));
    connect(&look, &Look::changed, this, &ThinkingBox::takeLook);
    setStage(m_stage);
    takeLook();
}

void ThinkingBox::setReasoning(const QString &reasoning) {
    if (m_flow.text().isSharedWith(reasoning))
        return;
    m_flow.setText(reasoning);
    updateRange();
    update();
}

void ThinkingBox::setStage(ThinkingStage stage) {
    m_stage = stage;
    updateRange();
    tellFold(this);
}

void ThinkingBox::setFollowsTail(bool followsTail) {
    m_followsTail = followsTail;
}

int ThinkingBox::layIn(int width) {
    m_flow.setWidth(width - 2 * style::thinkingPaddingX);
    updateRange();
    return int(std::ceil(m_flow.height())) + 2 * style::thinkingPaddingY;
}

int ThinkingBox::heightOfFiveLines(const Look &look) {
    return linesInBox * lineHeight(look) + 2 * style::thinkingPaddingY;
}

QString ThinkingBox::spokenName() const {
    return m_stage == ThinkingStage::expanded ? u"Back to the five-line box"_s
                                              : u"Show all of the thinking"_s;
}

Spoken::Fold ThinkingBox::spokenFold() const {
    return m_stage == ThinkingStage::expanded ? Fold::unfolded : Fold::folded;
}

void ThinkingBox::paintEvent(QPaintEvent *event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Palette &palette = look().palette();
    painter.setPen(QPen(palette.accentEdge(), style::hairline));
    painter.setBrush(palette.frameFill());
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), style::radiusButton,
                            style::radiusButton);
    const QRect area = textArea();
    const QPoint start = area.topLeft() - QPoint(0, m_bar->value());
    painter.save();
    painter.setClipRect(area);
    painter.translate(start);
    painter.setPen(palette.secondaryInk());
    m_flow.draw(painter, QRectF(area & event->rect()).translated(-start), {}, {}, {});
    painter.restore();
    drawFocusRing(painter, rect(), style::radiusButton);
}

void ThinkingBox::resizeEvent(QResizeEvent *) {
    m_bar->setGeometry(width() - style::scrollBar - style::hairline, style::spaceTiny, style::scrollBar,
                       height() - 2 * style::spaceTiny);
    updateRange();
}

void ThinkingBox::wheelEvent(QWheelEvent *event) {
    const int lines = QApplication::wheelScrollLines() * m_bar->singleStep();
    const int way =
        event->hasPixelDelta() ? event->pixelDelta().y() : event->angleDelta().y() * lines / notch;
    const int before = m_bar->value();
    m_bar->setValue(before - way);
    // At its end the box leaves the wheel to the list that it stands in.
    event->setAccepted(m_bar->value() != before);
}

void ThinkingBox::keyPressEvent(QKeyEvent *event) {
    const auto action = scrollBy(event->key());
    if (!action)
        return RowButton::keyPressEvent(event);
    const int before = m_bar->value();
    m_bar->triggerAction(*action);
    event->setAccepted(m_bar->value() != before);
}

void ThinkingBox::takeLook() {
    const QFont font = look().font(TextStyle::callout);
    const int line = lineHeight(look());
    m_flow.setFormat(font, line - int(std::ceil(QFontMetricsF(font).height())), Qt::AlignLeft);
    m_bar->setSingleStep(line);
    updateRange();
}

void ThinkingBox::updateRange() {
    const int room = std::max(textArea().height(), 0);
    m_bar->setRange(0, std::max(0, int(std::ceil(m_flow.height())) - room));
    m_bar->setPageStep(room);
    m_bar->setVisible(m_stage == ThinkingStage::box && m_bar->maximum() > 0);
    if (m_followsTail)
        m_bar->setValue(m_bar->maximum());
}

QRect ThinkingBox::textArea() const {
    return rect().adjusted(style::thinkingPaddingX, style::thinkingPaddingY, -style::thinkingPaddingX,
                           -style::thinkingPaddingY);
}
