#include "screens/EditorBox.h"

#include "screens/FieldFrame.h"
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
    drawFieldFrame(painter, rect(), m_look.palette(), m_editor->hasFocus());
}

bool EditorBox::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        update();
    return QWidget::eventFilter(watched, event);
}
