#pragma once

#include "pages/drawing/Spoken.h"

#include <QWidget>

class Look;
class QBoxLayout;
class QHBoxLayout;
class TextBox;
class WordButton;

/// A notice over the chat: what is wrong or on offer, and what can be done about it. Its buttons stand beside
/// the text, or below it where that leaves the text little room. A long text scrolls in it.
class Banner : public QWidget, public Spoken {
    Q_OBJECT

public:
    enum class Tone {
        problem, ///< something doesn't work
        remark,  ///< something to know
        offer,   ///< something to take or leave
    };

    /// `look` must outlive this object.
    Banner(const Look &look, Tone tone, QWidget *parent = nullptr);

    /// Adds a button after those that are there.
    WordButton *addButton(const QString &word);

    /// Shows the banner with that text, or takes it away where the text is empty.
    void setText(const QString &text);

    QAccessible::Role spokenRole() const override { return QAccessible::Notification; }
    QString spokenName() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void takeLook();
    void placeButtons();

    const Look &m_look;
    const Tone m_tone;
    TextBox *m_text;
    QBoxLayout *m_parts;
    QHBoxLayout *m_buttons;
};
