#pragma once

#include "screens/StatusLamp.h"

#include <QWidget>

class Label;
class Look;
class StatusDot;
class SymbolButton;

/// The bar over the chat: its title, the way to the saved pages, and the engine's lamp.
class ChatBar : public QWidget {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    explicit ChatBar(const Look &look, QWidget *parent = nullptr);

    void setTitle(const QString &title);
    void setLamp(const StatusLamp &lamp);

Q_SIGNALS:
    /// The person wants to see the saved pages.
    void pagesRequested();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const Look &m_look;
    Label *m_title;
    StatusDot *m_dot;
};
