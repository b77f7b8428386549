#pragma once

#include "pages/drawing/SelectableWidget.h"
#include "pages/drawing/Spoken.h"
#include "pages/drawing/TextFlow.h"
#include "screens/TextPreferences.h"

class Look;

/// Plain text to be read, selected and copied. Far lighter than an editor: a chat has hundreds of them.
class TextView : public SelectableWidget, public Spoken {
    Q_OBJECT

public:
    enum class Ground { background, accent };
    enum class Ink { main, secondary };

    struct Style {
        TextStyle text = TextStyle::body;
        Ground ground = Ground::background;
        Ink ink = Ink::main;
        Qt::Alignment alignment = Qt::AlignLeft;
    };

    /// `look` must outlive this object.
    TextView(const Look &look, const Style &style, QWidget *parent = nullptr);

    const QString &text() const override { return m_flow.text(); }
    void setText(const QString &text) override;
    int layIn(int width) override;
    /// The width of the widest line, as laid last.
    int usedWidth() const;

    QSize sizeHint() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

    QAccessible::Role spokenRole() const override { return QAccessible::StaticText; }
    QString spokenName() const override { return text(); }

protected:
    const SelectableText &content() const override { return m_flow; }
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void takeLook();

    const Look &m_look;
    const Style m_style;
    /// Being asked for a height lays the text, which changes nothing that a caller could see.
    mutable TextFlow m_flow;
};
