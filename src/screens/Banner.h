#pragma once

#include <QWidget>

class Look;
class TextBox;

/// A notice over the chat: what is wrong, and the one thing to do about it. A long text scrolls in it.
class Banner : public QWidget {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    Banner(const Look &look, const QString &action, QWidget *parent = nullptr);

    void setText(const QString &text);

Q_SIGNALS:
    void actionRequested();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const Look &m_look;
    TextBox *m_text;
};
