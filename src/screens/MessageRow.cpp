#include "screens/MessageRow.h"

#include "pages/drawing/Focus.h"
#include "screens/Look.h"
#include "screens/TypingIndicator.h"

#include <QFontMetricsF>
#include <QPainter>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

using Kind = MessageRowModel::Kind;

/// The typing indicator takes the height of a line, so that the first word moves nothing.
int lineHeight(const Look &look) {
    return int(std::ceil(QFontMetricsF(look.font(TextStyle::body)).height()));
}

TextView::Style textStyleOf(Kind kind) {
    switch (kind) {
    case Kind::user:
        return {.ground = TextView::Ground::accent};
    case Kind::note:
        return {.text = TextStyle::callout, .ink = TextView::Ink::secondary, .alignment = Qt::AlignHCenter};
    case Kind::assistant:
    case Kind::typing:
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
      m_look(look),
      m_model(model) {
    Spoken::install();
    setAttribute(Qt::WA_StaticContents);
    connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
    makeContent();
}

void MessageRow::setModel(const MessageRowModel &model) {
    const Kind before = m_model.kind;
    m_model = model;
    if (model.kind != before)
        makeContent();
    else if (m_text)
        m_text->setText(model.text);
}

int MessageRow::layIn(int width) {
    const int inner = width - 2 * style::rowOutset;
    int height = 0;
    if (m_typing) {
        height = lineHeight(m_look);
        m_typing->setGeometry(style::rowOutset, style::rowOutset, m_typing->sizeHint().width(), height);
    } else if (m_model.kind == Kind::user) {
        height = layUser(inner);
    } else {
        height = m_text->layIn(inner);
        m_text->setGeometry(style::rowOutset, style::rowOutset, inner, height);
    }
    return height + 2 * style::rowOutset;
}

int MessageRow::layUser(int width) {
    const int widest = std::min(style::bubbleMaximumWidth, width) - 2 * style::bubblePaddingX;
    m_text->layIn(widest);
    const int used = m_text->usedWidth();
    const int height = m_text->layIn(used);
    const int left = style::rowOutset + width - style::bubblePaddingX - used;
    m_text->setGeometry(left, style::rowOutset + style::bubblePaddingY, used, height);
    return height + 2 * style::bubblePaddingY;
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
    return int(text) + 2 * style::rowOutset + (isUser ? 2 * style::bubblePaddingY : 0);
}

QString MessageRow::spokenName() const {
    switch (m_model.kind) {
    case Kind::user:
        return u"You"_s;
    case Kind::assistant:
    case Kind::typing:
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

void MessageRow::makeContent() {
    delete std::exchange(m_text, nullptr);
    delete std::exchange(m_typing, nullptr);
    if (m_model.kind == Kind::typing) {
        m_typing = new TypingIndicator(m_look, this);
        m_typing->show();
        return;
    }
    m_text = new TextView(m_look, textStyleOf(m_model.kind), this);
    m_text->setText(m_model.text);
    m_text->show();
    connect(m_text, &TextView::left, this, &MessageRow::left);
    connect(m_text, &TextView::focusChanged, this, qOverload<>(&QWidget::update));
    connect(m_text, &TextView::caretMoved, this,
            [this](const QRect &caret) { Q_EMIT caretMoved(caret.translated(m_text->pos())); });
}
