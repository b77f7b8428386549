#include "screens/ComposerTextView.h"

#include "screens/LocalFiles.h"
#include "screens/Look.h"
#include "screens/PageKeys.h"

#include <QDragEnterEvent>
#include <QGuiApplication>
#include <QInputMethod>
#include <QKeyEvent>
#include <QMimeData>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextLayout>

#include <cmath>

using namespace Qt::StringLiterals;

ComposerTextView::ComposerTextView(const Look &look, QWidget *parent) : QTextEdit(parent), m_look(look) {
    setAcceptRichText(false);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTabChangesFocus(true);
    setPlaceholderText(u"Message Ostrelin"_s);
    setAccessibleName(u"Message Ostrelin"_s);
    document()->setDocumentMargin(0);
    viewport()->setAutoFillBackground(false);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    connect(&look, &Look::changed, this, &ComposerTextView::takeLook);
    takeLook();
}

QString ComposerTextView::writtenText() const {
    // Not toPlainText(), which makes blanks of no-break spaces.
    QString text = document()->toRawText();
    for (QChar &character : text) {
        if (character == QChar::ParagraphSeparator || character == QChar::LineSeparator)
            character = u'\n';
    }
    return text;
}

void ComposerTextView::setWrittenText(const QString &text) {
    if (text != writtenText())
        setPlainText(text);
}

int ComposerTextView::naturalHeight() const {
    return int(std::ceil(document()->size().height()));
}

void ComposerTextView::keyPressEvent(QKeyEvent *event) {
    if (leavesKey(*event))
        return event->ignore();
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        return QTextEdit::keyPressEvent(event);
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

void ComposerTextView::focusOutEvent(QFocusEvent *event) {
    QTextEdit::focusOutEvent(event);
    // An input method that hasn't ended by now won't: what it has composed stays as it is.
    if (const QString composed = composedText(); !composed.isEmpty()) {
        QInputMethodEvent end;
        end.setCommitString(composed);
        inputMethodEvent(&end);
    }
}

QString ComposerTextView::composedText() const {
    return textCursor().block().layout()->preeditAreaText();
}

void ComposerTextView::dragEnterEvent(QDragEnterEvent *event) {
    if (filesIn(*event->mimeData()).isEmpty())
        QTextEdit::dragEnterEvent(event);
    else
        event->ignore();
}

void ComposerTextView::insertFromMimeData(const QMimeData *source) {
    const QStringList files = filesIn(*source);
    if (!files.isEmpty())
        Q_EMIT filesPasted(files);
    else if (source->hasText())
        insertPlainText(source->text());
}

bool ComposerTextView::canInsertFromMimeData(const QMimeData *source) const {
    return source->hasText();
}

void ComposerTextView::takeLook() {
    setFont(m_look.font(TextStyle::body));
    QPalette colors = palette();
    colors.setColor(QPalette::Text, m_look.palette().ink);
    colors.setColor(QPalette::PlaceholderText, m_look.palette().secondaryInk());
    colors.setColor(QPalette::Highlight, m_look.palette().selection());
    colors.setColor(QPalette::HighlightedText, m_look.palette().ink);
    setPalette(colors);
}
