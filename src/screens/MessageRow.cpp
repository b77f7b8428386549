#include "screens/MessageRow.h"

#include "pages/drawing/Focus.h"
#include "screens/Look.h"
#include "screens/TypingIndicator.h"

#include <QFontMetricsF>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

using Kind = MessageRowModel::Kind;

TextView::Style textStyleOf(Kind kind) {
    switch (kind) {
    case Kind::user:
        return {.ground = TextView::Ground::accent};
    case Kind::note:
        return {.text = TextStyle::callout, .ink = TextView::Ink::secondary, .alignment = Qt::AlignHCenter};
    case Kind::assistant:
        return {};
    }
    Q_UNREACHABLE();
}

QRect grown(const QRect &rect, int x, int y) {
    return rect.adjusted(-x, -y, x, y);
}

} // namespace

MessageRow::MessageRow(const Look &look, const MessageRowModel &model, QWidget *parent)
    : QWidget(parent),
      m_look(look) {
    Spoken::install();
    setAttribute(Qt::WA_StaticContents);
    connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
    setModel(model);
}

void MessageRow::setModel(const MessageRowModel &model) {
    m_model = model;
    showText();
    showTyping();
}

int MessageRow::layIn(int width) {
    const int inner = width - 2 * style::rowOutset;
    const int height = m_model.kind == Kind::user ? layBubble(inner) : layParts(inner);
    return height + 2 * style::rowOutset;
}

int MessageRow::layBubble(int width) {
    const int widest = std::min(style::bubbleMaximumWidth, width) - 2 * style::bubblePaddingX;
    m_text->layIn(widest);
    const int used = m_text->usedWidth();
    const int height = m_text->layIn(used);
    const int left = style::rowOutset + width - style::bubblePaddingX - used;
    m_text->setGeometry(left, style::rowOutset + style::bubblePaddingY, used, height);
    return height + 2 * style::bubblePaddingY;
}

int MessageRow::layParts(int width) {
    int bottom = 0;
    const auto add = [&](QWidget *part, int gap, const QSize &size) {
        const int top = bottom == 0 ? 0 : bottom + gap;
        part->setGeometry({{style::rowOutset, style::rowOutset + top}, size});
        bottom = top + size.height();
    };
    if (m_text)
        add(m_text, style::partGap, {width, m_text->layIn(width)});
    if (m_typing)
        add(m_typing, style::footGap, {m_typing->sizeHint().width(), style::footHeight});
    return bottom;
}

int MessageRow::estimatedHeight(const Look &look, const MessageRowModel &model, int width) {
    const QFontMetricsF metrics(look.font(TextStyle::body));
    const bool isUser = model.kind == Kind::user;
    const int inner = width - 2 * style::rowOutset;
    const int textWidth =
        isUser ? std::min(style::bubbleMaximumWidth, inner) - 2 * style::bubblePaddingX : inner;
    const double lines = double(model.text.size()) * metrics.averageCharWidth() / std::max(textWidth, 1) +
                         double(model.text.count(u'\n')) + 1;
    const double text = lines * (metrics.height() + lineSpacing(look.text().size));
    const int foot = model.isStreaming ? style::footGap + style::footHeight : 0;
    return int(text) + 2 * style::rowOutset + (isUser ? 2 * style::bubblePaddingY : foot);
}

QString MessageRow::spokenName() const {
    switch (m_model.kind) {
    case Kind::user:
        return u"You"_s;
    case Kind::assistant:
        return u"Ostrelin"_s;
    case Kind::note:
        return u"Note"_s;
    }
    Q_UNREACHABLE();
}

void MessageRow::paintEvent(QPaintEvent *) {
    if (!m_text)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool isUser = m_model.kind == Kind::user;
    QRect area = m_text->geometry();
    if (isUser) {
        area = grown(area, style::bubblePaddingX, style::bubblePaddingY);
        painter.setPen(Qt::NoPen);
        painter.setBrush(m_look.palette().accent);
        painter.drawRoundedRect(area, style::radiusBubble, style::radiusBubble);
    }
    if (m_text->showsFocus())
        drawRing(painter, grown(area, style::rowOutset, style::rowOutset),
                 isUser ? style::radiusBubble + style::rowOutset : style::radiusButton,
                 m_look.palette().accent);
}

void MessageRow::showText() {
    if (m_model.text.isEmpty() && m_model.kind == Kind::assistant)
        return delete std::exchange(m_text, nullptr);
    if (!m_text) {
        m_text = new TextView(m_look, textStyleOf(m_model.kind), this);
        m_text->show();
        connect(m_text, &TextView::left, this, &MessageRow::left);
        connect(m_text, &TextView::focusChanged, this, qOverload<>(&QWidget::update));
        connect(m_text, &TextView::caretMoved, this,
                [this](const QRect &caret) { Q_EMIT caretMoved(caret.translated(m_text->pos())); });
    }
    m_text->setText(m_model.text);
}

void MessageRow::showTyping() {
    if (!m_model.isStreaming)
        return delete std::exchange(m_typing, nullptr);
    if (m_typing)
        return;
    m_typing = new TypingIndicator(m_look, this);
    m_typing->show();
}
