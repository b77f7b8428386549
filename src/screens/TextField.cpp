#include "screens/TextField.h"

#include "screens/FieldFrame.h"
#include "screens/Look.h"
#include "screens/Style.h"

#include <QPainter>

TextField::TextField(const Look &look, const QString &name, QWidget *parent)
    : QLineEdit(parent),
      m_look(look) {
    setAccessibleName(name);
    setFrame(false);
    setTextMargins(style::fieldPadding, 0, style::fieldPadding, 0);
    setMinimumHeight(style::fieldHeight);
    connect(&look, &Look::changed, this, &TextField::takeLook);
    takeLook();
}

void TextField::paintEvent(QPaintEvent *event) {
    QPainter painter(this);
    drawFieldFrame(painter, rect(), m_look.palette(), hasFocus());
    painter.end();
    QLineEdit::paintEvent(event);
}

void TextField::takeLook() {
    setFont(m_look.font(TextStyle::callout));
    QPalette colors = toolkitPalette(m_look.palette());
    colors.setColor(QPalette::Base, Qt::transparent);
    setPalette(colors);
}
