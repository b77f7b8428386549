#include "screens/ConsentCard.h"

#include "screens/CardButton.h"
#include "screens/Look.h"
#include "screens/Style.h"
#include "screens/TextView.h"

#include <QFontMetrics>
#include <QPainter>

namespace {

constexpr int textLeft = style::cardPadding + style::iconSize + style::spaceSmall;

} // namespace

ConsentCard::ConsentCard(const Look &look, const Content &content, QWidget *parent)
    : RowPart(parent),
      m_look(look),
      m_symbol(content.symbol),
      m_question(content.question) {
    Spoken::install();
    for (const QString &text : {content.text, content.detail}) {
        if (!text.isEmpty())
            m_texts.append(addText(text));
    }
    for (int answer = 0; answer < content.answers.size(); ++answer) {
        auto *button = new CardButton(look, content.answers.at(answer), this);
        connect(button, &LookButton::clicked, this, [this, answer] { Q_EMIT answered(answer); });
        connect(button, &LookButton::focusChanged, this, &RowPart::focusChanged);
        m_buttons.append(button);
    }
    connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
}

TextView *ConsentCard::addText(const QString &text) {
    auto *view = new TextView(m_look, {}, this);
    view->setText(text);
    connect(view, &SelectableWidget::focusChanged, this, [this] {
        update();
        Q_EMIT focusChanged();
    });
    connect(view, &SelectableWidget::left, this, &RowPart::left);
    return view;
}

int ConsentCard::layIn(int width) {
    const int outer = std::min(width, style::cardMaximumWidth);
    const int inner = outer - textLeft - style::cardPadding;
    int bottom = style::cardPadding;
    for (TextView *text : m_texts) {
        const int height = text->layIn(inner);
        text->setGeometry(textLeft, bottom, inner, height);
        bottom += height + style::cardGap;
    }
    return layButtons(textLeft, bottom, inner) + style::cardPadding;
}

int ConsentCard::layButtons(int left, int top, int width) {
    int x = left;
    int bottom = top;
    for (CardButton *button : m_buttons) {
        const QSize size = button->sizeHint().boundedTo({width, QWIDGETSIZE_MAX});
        if (x > left && x + size.width() > left + width) {
            x = left;
            top = bottom + style::cardButtonGap;
        }
        button->setGeometry({{x, top}, size});
        x += size.width() + style::cardButtonGap;
        bottom = top + size.height();
    }
    return bottom;
}

QList<QWidget *> ConsentCard::stops() const {
    QList<QWidget *> stops(m_texts.begin(), m_texts.end());
    for (CardButton *button : m_buttons)
        stops.append(button);
    return stops;
}

QString ConsentCard::spokenName() const {
    QStringList texts{m_question};
    for (const TextView *text : m_texts)
        texts.append(text->text());
    texts.removeAll(QString());
    return texts.join(u'\n');
}

int ConsentCard::estimatedHeight(const Look &look) {
    const int line = QFontMetrics(look.font(TextStyle::body)).height();
    return 2 * style::cardPadding + line + style::cardGap + style::buttonHeight;
}

void ConsentCard::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Palette &palette = m_look.palette();
    const int outer = std::min(width(), style::cardMaximumWidth);
    const double half = style::hairline / 2.0;
    painter.setPen(QPen(palette.accentEdge(), style::hairline));
    painter.setBrush(palette.askingFill());
    painter.drawRoundedRect(QRectF(0, 0, outer, height()).adjusted(half, half, -half, -half),
                            style::radiusCard, style::radiusCard);
    const QFontMetricsF metrics(m_look.font(TextStyle::body));
    const double top = style::cardPadding + (metrics.height() - style::iconSize) / 2;
    drawIcon(painter, m_symbol, QRectF(style::cardPadding, top, style::iconSize, style::iconSize),
             palette.accent);
    for (const TextView *text : m_texts) {
        if (text->showsFocus())
            drawRing(painter,
                     text->geometry().adjusted(-style::rowOutset, -style::rowOutset, style::rowOutset,
                                               style::rowOutset),
                     style::radiusMark, palette.accent);
    }
}
