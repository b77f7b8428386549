#pragma once

#include "pages/drawing/Focus.h"
#include "pages/drawing/SelectableText.h"

#include <QBasicTimer>
#include <QWidget>

class QMenu;

/// A widget with a text that a person can select with mouse or keys, and copy, but not change. What the
/// text is and how it is drawn is for the widget that inherits this. An update of the text keeps the
/// selection. Main thread.
class SelectableWidget : public QWidget {
    Q_OBJECT

public:
    /// The ends over which a caret can leave the text.
    enum class Edge { top, bottom };

    explicit SelectableWidget(QWidget *parent = nullptr);

    virtual const QString &text() const = 0;
    virtual void setText(const QString &text) = 0;
    /// Lays the text into that width and gives the height that it takes there, both with the margin.
    virtual int layIn(int width) = 0;
    /// How far inside the widget the text stands on every side, so that what reaches beyond it isn't cut.
    virtual int margin() const { return 0; }
    /// Where the text stands in the parent.
    QRect textArea() const { return geometry().adjusted(margin(), margin(), -margin(), -margin()); }

    QString selectedText() const;
    void selectAll();
    void copy() const;

    /// True while the focus is here because of a key.
    bool showsFocus() const { return m_keyFocus.isByKey() && hasFocus(); }

Q_SIGNALS:
    /// The caret stands there now, in this widget's coordinates.
    void caretMoved(const QRect &caret);
    /// The person wants to go on beyond the text.
    void left(SelectableWidget::Edge edge);
    void focusChanged();

protected:
    /// The text as it is laid now, in this widget's coordinates.
    virtual const SelectableText &content() const = 0;

    const TextSelection &selection() const { return m_selection; }
    void select(const TextSelection &selection);
    /// Leaves out what the text no longer has.
    void keepSelectionInside();
    /// The focus is here because of a key from now on.
    void showFocus();

    /// What the person can do at a point of the text.
    virtual void fillMenu(QMenu &menu, const QPoint &point);

    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    void dragTo(const QPointF &point);
    void openMenu(const QPoint &place);
    bool moveCaret(const QKeyEvent &event);
    bool isTripleClick(const QMouseEvent &event) const;

    TextSelection m_selection;
    bool m_isDragging = false;
    KeyFocus m_keyFocus;
    QBasicTimer m_dragTicker;
    ulong m_doubleClickTime = 0;
};
