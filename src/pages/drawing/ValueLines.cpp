#include "pages/drawing/ValueLines.h"

#include "pages/drawing/FigureSentence.h"

#include <algorithm>

namespace {

constexpr double gap = 10;

TextPart::Setting labelSetting() {
    return {.step = TextStep::callout, .reading = TextPart::Reading::plain};
}

TextPart::Setting numberSetting(const DrawingTheme &theme) {
    return {
        .step = TextStep::monospacedCallout, .color = theme.secondary, .reading = TextPart::Reading::plain};
}

} // namespace

ValueLines::ValueLines(const DrawingTheme &theme)
    : m_labels(theme, labelSetting()),
      m_numbers(theme, numberSetting(theme)) {}

qsizetype ValueLines::setLines(const Texts &labels, const QStringList &numbers) {
    return std::min(m_labels.setTexts(labels), m_numbers.setTexts(Texts(numbers.begin(), numbers.end())));
}

double ValueLines::place(qsizetype line, const QPointF &origin, double width) {
    const double numberLeft = std::max(width - m_numbers[line].usedWidth(), 0.0);
    m_labels[line].layIn(std::max(numberLeft - gap, 0.0));
    return placeSideBySide(m_labels[line], m_numbers[line], origin, numberLeft);
}

QRectF ValueLines::numberArea(qsizetype line) const {
    QRectF area = m_numbers[line].area();
    area.setWidth(m_numbers[line].usedWidth());
    return area;
}

void ValueLines::listTexts(std::vector<const TextPart *> &texts) const {
    for (qsizetype line = 0; line < size(); ++line) {
        texts.push_back(&m_labels[line]);
        texts.push_back(&m_numbers[line]);
    }
}

QString ValueLines::sentence(const QString &title) const {
    return figureSentence(title, size(), [this](qsizetype line) {
        return m_labels[line].text() + u' ' + m_numbers[line].text();
    });
}
