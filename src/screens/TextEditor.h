#pragma once

#include "screens/TextPreferences.h"

#include <QTextEdit>

class Look;

/// A field in which several lines of plain text are written. Tab leaves it. Only plain text comes in by
/// pasting or dropping. What an input method has composed is taken as it is when the field loses the focus or
/// goes out of sight.
class TextEditor : public QTextEdit {
    Q_OBJECT

public:
    /// `name` is what the field is called aloud. `look` must outlive this object.
    TextEditor(const Look &look, TextStyle style, const QString &name, QWidget *parent = nullptr);

    /// What is written, with "\n" between lines and otherwise unchanged.
    QString writtenText() const;

    /// Replaces what is written; nothing happens if it is that already, so the cursor doesn't jump.
    void setWrittenText(const QString &text);

    /// The same by changing no more than the part that differs: the cursor stays where it is, and the change
    /// can be undone.
    void changeWrittenText(const QString &wanted);

    /// The height that all lines take.
    int naturalHeight() const;

Q_SIGNALS:
    /// The focus has gone, or the field is out of sight.
    void left();

protected:
    void focusOutEvent(QFocusEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void insertFromMimeData(const QMimeData *source) override;
    bool canInsertFromMimeData(const QMimeData *source) const override;

    /// What an input method composes now; empty while it doesn't.
    QString composedText() const;

private:
    void takeLook();
    void takeComposed();

    const Look &m_look;
    const TextStyle m_style;
};
