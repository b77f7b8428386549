#pragma once

#include <QTextEdit>

class Look;

/// The field in which a message is written. Return sends, Shift and Return breaks the line. Page keys are
/// left to what is around while all of the text is in sight. Only plain text comes in by pasting or dropping;
/// pasted files are told of, and dropped ones left to what is around.
class ComposerTextView : public QTextEdit {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    explicit ComposerTextView(const Look &look, QWidget *parent = nullptr);

    /// What is written, with "\n" between lines and otherwise unchanged.
    QString writtenText() const;

    /// Replaces what is written; nothing happens if it is that already, so the cursor doesn't jump.
    void setWrittenText(const QString &text);

    /// The height that all lines take.
    int naturalHeight() const;

Q_SIGNALS:
    /// The person wants to send.
    void submitted();
    void filesPasted(const QStringList &paths);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void insertFromMimeData(const QMimeData *source) override;
    bool canInsertFromMimeData(const QMimeData *source) const override;

private:
    void takeLook();
    /// What an input method composes now; empty while it doesn't.
    QString composedText() const;
    bool leavesKey(const QKeyEvent &event) const;

    const Look &m_look;
};
