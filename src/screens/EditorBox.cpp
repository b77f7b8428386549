#include "screens/EditorBox.h"

#include "screens/Look.h"
#include "screens/Style.h"
#include "screens/TextEditor.h"

#include <QEvent>
#include <QPainter>
#include <QVBoxLayout>

EditorBox::EditorBox(const Look &look, TextEditor *editor, QWidget *parent)
    : QWidget(parent),
      m_look(look),
      m_editor(editor) {
    auto *inside = new QVBoxLayout(this);
    inside->setContentsMargins(style::fieldPadding, style::spaceSmall, style::spaceTiny, style::spaceSmall);
    inside->addWidget(editor);
    setFocusProxy(editor);
    editor->installEventFilter(this);
    connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
}

void EditorBox::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Palette &palette = m_look.palette();
    painter.setBrush(palette.surface);
    painter.setPen(QPen(palette.livelyEdge(), style::hairline));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), style::radiusButton,
                            style::radiusButton);
    if (m_editor->hasFocus())
        drawRing(painter, rect(), style::radiusButton, palette.accent);
}

bool EditorBox::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        update();
    return QWidget::eventFilter(watched, event);
}
