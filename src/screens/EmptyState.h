#pragma once

#include <QScrollArea>

class Label;
class Look;

/// What a chat without messages shows: a heading, perhaps a hint, and four suggestions.
class EmptyState : public QScrollArea {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    explicit EmptyState(const Look &look, QWidget *parent = nullptr);

    /// The line under the heading; empty for none.
    void setHint(const QString &hint);

Q_SIGNALS:
    /// The person chose that suggestion.
    void suggested(const QString &text);

private:
    QWidget *makeSuggestions(const Look &look);

    Label *m_hint;
};
