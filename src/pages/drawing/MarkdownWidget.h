#pragma once

#include "pages/drawing/MarkdownView.h"
#include "pages/drawing/ScaledText.h"
#include "pages/drawing/SelectableWidget.h"

/// A text of the page dialect on the screen: it can be read, selected and copied, its links followed and its
/// code copied, with mouse or keys. Tab goes through links and buttons before it leaves.
class MarkdownWidget : public SelectableWidget {
    Q_OBJECT

public:
    explicit MarkdownWidget(const DrawingTheme &theme, QWidget *parent = nullptr);
    /// Shows a drawing that has been laid already.
    explicit MarkdownWidget(std::unique_ptr<MarkdownView> view, QWidget *parent = nullptr);

    const QString &text() const override { return m_view->text(); }
    /// Only what changes is laid and painted; before the first layIn() it is nothing.
    void setText(const QString &text) override;
    int layIn(int width) override;
    int margin() const override { return figure::reach; }
    void setTheme(const DrawingTheme &theme);

    const MarkdownView &view() const { return *m_view; }

    /// How large the drawing is shown: 1 is as it was laid.
    void setScale(double scale);
    double scale() const { return m_scaled.scale(); }
    /// From the drawing's coordinates to the widget's, and back.
    QRectF inWidget(const QRectF &area) const;
    QPointF inView(const QPointF &point) const { return point / scale(); }

    /// The one of the view's targets that the keyboard is on; none if it is on the text.
    std::optional<Target> focusedTarget() const;
    /// Copies, or asks for a link to be followed.
    void press(const Target &target);

    QSize sizeHint() const override;

Q_SIGNALS:
    /// The person wants to go there: to a web page, or to write to somebody. A model wrote the address.
    void linkActivated(const QUrl &address);
    /// From that block on, something else is shown, or elsewhere.
    void blocksChanged(int first);

protected:
    const SelectableText &content() const override { return m_scaled; }
    void fillMenu(QMenu &menu, const QPoint &point) override;
    bool focusNextPrevChild(bool next) override;
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    enum class Step { back, forth };

    std::optional<Target> targetAt(const QPointF &point) const { return m_view->targetAt(inView(point)); }
    /// To be told after a change of what is shown from that block on.
    void tellChange(size_t firstBlock);
    bool focusTarget(Step step);
    void leaveTarget();
    void hover(const QPointF &point);
    /// What lies under the pointer may be something else now.
    void followPointer();
    void drawButtonGround(QPainter &painter) const;
    void drawFocus(QPainter &painter) const;

    std::unique_ptr<MarkdownView> m_view;
    ScaledText m_scaled;
    int m_focusedTarget = -1; ///< its place in the view's targets
    std::optional<Target> m_hovered;
    std::optional<Target> m_pressed;
};
