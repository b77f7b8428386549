#include "screens/ComposerTextView.h"

#include "screens/LocalFiles.h"
#include "screens/PageKeys.h"

#include <QDragEnterEvent>
#include <QGuiApplication>
#include <QInputMethod>
#include <QKeyEvent>
#include <QScrollBar>

using namespace Qt::StringLiterals;

ComposerTextView::ComposerTextView(const Look &look, QWidget *parent)
    : TextEditor(look, TextStyle::body, u"Message Ostrelin"_s, parent) {
    setPlaceholderText(u"Message Ostrelin"_s);
}

void ComposerTextView::keyPressEvent(QKeyEvent *event) {
    if (leavesKey(*event))
        return event->ignore();
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        return TextEditor::keyPressEvent(event);
    event->accept();
    if (!composedText().isEmpty())
        QGuiApplication::inputMethod()->commit();
    else if (event->modifiers().testFlag(Qt::ShiftModifier))
        insertPlainText(u"\n"_s);
    else if (!event->isAutoRepeat())
        Q_EMIT submitted();
    ensureCursorVisible();
}

bool ComposerTextView::leavesKey(const QKeyEvent &event) const {
    const bool selects = event.modifiers().testFlag(Qt::ShiftModifier);
    return isPageKey(event.key()) && !selects && verticalScrollBar()->maximum() == 0;
}

void ComposerTextView::dragEnterEvent(QDragEnterEvent *event) {
    if (filesIn(*event->mimeData()).isEmpty())
        TextEditor::dragEnterEvent(event);
    else
        event->ignore();
}

void ComposerTextView::insertFromMimeData(const QMimeData *source) {
    const QStringList files = filesIn(*source);
    if (files.isEmpty())
        TextEditor::insertFromMimeData(source);
    else
        Q_EMIT filesPasted(files);
}
