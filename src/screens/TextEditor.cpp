#include "screens/TextEditor.h"

#include "screens/Look.h"

#include <QInputMethodEvent>
#include <QMimeData>
#include <QTextBlock>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace {

/// The text with "\n" between lines, as an editor keeps it.
QString withPlainLines(QString text) {
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    for (QChar &character : text) {
        if (character == u'\r' || character == QChar::ParagraphSeparator || character == QChar::LineSeparator)
            character = u'\n';
    }
    return text;
}

} // namespace

TextEditor::TextEditor(const Look &look, TextStyle style, const QString &name, QWidget *parent)
    : QTextEdit(parent),
      m_look(look),
      m_style(style) {
    setAcceptRichText(false);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTabChangesFocus(true);
    setAccessibleName(name);
    document()->setDocumentMargin(0);
    viewport()->setAutoFillBackground(false);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    connect(&look, &Look::changed, this, &TextEditor::takeLook);
    takeLook();
}

QString TextEditor::writtenText() const {
    // Not toPlainText(), which makes blanks of no-break spaces.
    return withPlainLines(document()->toRawText());
}

void TextEditor::setWrittenText(const QString &text) {
    if (text != writtenText())
        setPlainText(text);
}

void TextEditor::changeWrittenText(const QString &wanted) {
    const QString text = withPlainLines(wanted);
    const QString before = writtenText();
    const auto firstThatDiffers = std::mismatch(before.begin(), before.end(), text.begin(), text.end());
    const auto start = int(firstThatDiffers.first - before.begin());
    const auto lastThatDiffers =
        std::mismatch(before.rbegin(), before.rend() - start, text.rbegin(), text.rend() - start);
    const auto kept = int(lastThatDiffers.first - before.rbegin());
    if (start == before.size() && start == text.size())
        return;
    QTextCursor change(document());
    change.setPosition(start);
    change.setPosition(int(before.size()) - kept, QTextCursor::KeepAnchor);
    change.insertText(text.mid(start, text.size() - start - kept));
}

int TextEditor::naturalHeight() const {
    return int(std::ceil(document()->size().height()));
}

void TextEditor::focusOutEvent(QFocusEvent *event) {
    QTextEdit::focusOutEvent(event);
    takeComposed();
    Q_EMIT left();
}

void TextEditor::hideEvent(QHideEvent *event) {
    takeComposed();
    QTextEdit::hideEvent(event);
    Q_EMIT left();
}

void TextEditor::takeComposed() {
    // An input method that hasn't ended by now won't.
    if (const QString composed = composedText(); !composed.isEmpty()) {
        QInputMethodEvent end;
        end.setCommitString(composed);
        inputMethodEvent(&end);
    }
}

QString TextEditor::composedText() const {
    return textCursor().block().layout()->preeditAreaText();
}

void TextEditor::insertFromMimeData(const QMimeData *source) {
    if (source->hasText())
        insertPlainText(source->text());
}

bool TextEditor::canInsertFromMimeData(const QMimeData *source) const {
    return source->hasText();
}

void TextEditor::takeLook() {
    setFont(m_look.font(m_style));
    QPalette colors = palette();
    colors.setColor(QPalette::Text, m_look.palette().ink);
    colors.setColor(QPalette::PlaceholderText, m_look.palette().secondaryInk());
    colors.setColor(QPalette::Highlight, m_look.palette().selection());
    colors.setColor(QPalette::HighlightedText, m_look.palette().ink);
    setPalette(colors);
}
