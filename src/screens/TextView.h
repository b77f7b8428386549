#pragma once

#include "pages/drawing/Spoken.h"
#include "pages/drawing/TextFlow.h"
#include "screens/TextPreferences.h"

#include <QBasicTimer>
#include <QPointer>
#include <QWidget>

class Look;

/// Plain text that a person can read, select with mouse or keys, and copy, but not change. Far lighter
/// than an editor: a chat has hundreds of them. An update of the text keeps the selection.
class TextView : public QWidget, public Spoken {
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

    /// The ends over which a caret can leave the text.
    enum class Edge { top, bottom };

    /// `look` must outlive this object.
    TextView(const Look &look, const Style &style, QWidget *parent = nullptr);

    const QString &text() const { return m_flow.text(); }
    void setText(const QString &text);

    /// Lays the text into that width and gives the height that it takes there.
    int layIn(int width);
    /// The width of the widest line, as laid last.
    int usedWidth() const;

    QString selectedText() const;
    void selectAll();
    void copy() const;

    /// True while the focus is here because of a key.
    bool showsFocus() const { return m_showsFocus && hasFocus(); }

    QSize sizeHint() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

    QAccessible::Role spokenRole() const override { return QAccessible::StaticText; }
    QString spokenName() const override { return text(); }

Q_SIGNALS:
    /// The caret stands there now, in this widget's coordinates.
    void caretMoved(const QRect &caret);
    /// The person wants to go on beyond the text.
    void left(TextView::Edge edge);
    void focusChanged();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void takeLook();
    void select(const TextSelection &selection);
    void dragTo(const QPointF &point);
    bool moveCaret(const QKeyEvent &event);
    bool isTripleClick(const QMouseEvent &event) const;

    const Look &m_look;
    const Style m_style;
    /// Being asked for a height lays the text, which changes nothing that a caller could see.
    mutable TextFlow m_flow;
    TextSelection m_selection;
    bool m_isDragging = false;
    bool m_showsFocus = false;
    QBasicTimer m_dragTicker;
    ulong m_doubleClickTime = 0;
};
