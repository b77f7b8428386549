#include "pages/drawing/MarkdownWidget.h"

#include "pages/drawing/Focus.h"
#include "pages/drawing/LinkAddress.h"
#include "pages/drawing/MarkdownAccessible.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QMenu>
#include <QPainter>
#include <QToolTip>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr double hoverOpacity = 0.07;
constexpr double pressedOpacity = 0.13;
constexpr double buttonRadius = 6;
constexpr double ringReach = 3;
constexpr double ringRadius = 5;
constexpr qsizetype tipColumns = 72;

/// Broken into lines, since a tip doesn't do that.
QString tipOf(const QUrl &address) {
    QString tip = shownAddress(address);
    for (qsizetype end = tipColumns; end < tip.size(); end += tipColumns + 1)
        tip.insert(end, u'\n');
    return tip;
}

QRectF around(const Target &target) {
    QRectF area;
    for (const QRectF &part : target.areas)
        area |= part;
    return area;
}

bool isLink(const std::optional<Target> &target) {
    return target && target->kind == Target::Kind::link;
}

/// True for a link to the same address, wherever it stands now, and for a button at the same place,
/// whatever it copies now: the text may have grown.
bool isStill(const std::optional<Target> &target, const std::optional<Target> &before) {
    if (!target || !before || target->kind != before->kind)
        return false;
    return isLink(target) ? target->address == before->address : target->areas == before->areas;
}

} // namespace

MarkdownWidget::MarkdownWidget(const DrawingTheme &theme, QWidget *parent)
    : MarkdownWidget(std::make_unique<MarkdownView>(theme, QMargins() + figure::reach), parent) {}

MarkdownWidget::MarkdownWidget(std::unique_ptr<MarkdownView> view, QWidget *parent)
    : SelectableWidget(parent),
      m_view(std::move(view)),
      m_scaled(*m_view) {
    markdownAccessible::install();
    setMouseTracking(true);
}

void MarkdownWidget::setText(const QString &text) {
    if (text == m_view->text())
        return;
    const double before = m_view->height();
    const double changed = m_view->setText(text);
    keepSelectionInside();
    const double bottom = std::max(before, m_view->height());
    update(inWidget({0, changed, m_view->width(), bottom - changed}).toAlignedRect());
    tellChange(m_view->blockAt(changed));
}

void MarkdownWidget::setTheme(const DrawingTheme &theme) {
    m_view->setTheme(theme);
    update();
    tellChange(0);
}

int MarkdownWidget::layIn(int width) {
    if (m_view->width() != width) {
        m_view->layIn(width);
        tellChange(0);
    }
    return int(m_view->height());
}

void MarkdownWidget::setScale(double scale) {
    if (m_scaled.scale() == scale)
        return;
    m_scaled.setScale(scale);
    update();
    tellChange(0);
}

QRectF MarkdownWidget::inWidget(const QRectF &area) const {
    return {area.topLeft() * scale(), area.size() * scale()};
}

void MarkdownWidget::tellChange(size_t firstBlock) {
    updateGeometry();
    followPointer();
    Q_EMIT blocksChanged(int(firstBlock));
    if (QAccessible::isActive()) {
        QAccessibleEvent renamed(this, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&renamed);
    }
}

QSize MarkdownWidget::sizeHint() const {
    return inWidget({0, 0, m_view->width(), m_view->height()}).size().toSize();
}

std::optional<Target> MarkdownWidget::focusedTarget() const {
    if (m_focusedTarget < 0)
        return std::nullopt;
    const QList<Target> targets = m_view->targets();
    return m_focusedTarget < targets.size() ? std::optional(targets.at(m_focusedTarget)) : std::nullopt;
}

void MarkdownWidget::press(const Target &target) {
    if (target.kind == Target::Kind::copy)
        QGuiApplication::clipboard()->setText(target.copied);
    else
        Q_EMIT linkActivated(target.address);
}

void MarkdownWidget::fillMenu(QMenu &menu, const QPoint &point) {
    SelectableWidget::fillMenu(menu, point);
    const std::optional<Target> focused = focusedTarget();
    const std::optional<Target> target = focused ? focused : targetAt(point);
    if (!isLink(target))
        return;
    menu.addAction(u"Copy Link"_s, this, [address = QString::fromLatin1(target->address.toEncoded())] {
        QGuiApplication::clipboard()->setText(address);
    });
}

bool MarkdownWidget::focusNextPrevChild(bool next) {
    if (focusTarget(next ? Step::forth : Step::back))
        return true;
    leaveTarget();
    return SelectableWidget::focusNextPrevChild(next);
}

bool MarkdownWidget::focusTarget(Step step) {
    const int target = m_focusedTarget + (step == Step::forth ? 1 : -1);
    const QList<Target> targets = m_view->targets();
    // Before the first one comes the text itself.
    const bool isInside = m_focusedTarget >= 0 ? target >= -1 : step == Step::forth;
    if (!isInside || target >= targets.size())
        return false;
    m_focusedTarget = target;
    showFocus();
    const QRectF area = target < 0 ? m_view->caretAt(selection().caret) : around(targets.at(target));
    Q_EMIT caretMoved(inWidget(area).toAlignedRect());
    markdownAccessible::tellFocus(this);
    return true;
}

void MarkdownWidget::leaveTarget() {
    if (std::exchange(m_focusedTarget, -1) >= 0)
        update();
}

bool MarkdownWidget::event(QEvent *event) {
    if (event->type() != QEvent::ToolTip)
        return SelectableWidget::event(event);
    const auto *help = static_cast<QHelpEvent *>(event);
    const std::optional<Target> target = targetAt(help->pos());
    if (isLink(target))
        QToolTip::showText(help->globalPos(), tipOf(target->address), this,
                           inWidget(around(*target)).toAlignedRect());
    else
        QToolTip::hideText();
    return true;
}

void MarkdownWidget::paintEvent(QPaintEvent *event) {
    QPainter painter(this);
    painter.scale(scale(), scale());
    const QRectF clip(inView(event->rect().topLeft()), QSizeF(event->rect().size()) / scale());
    m_view->draw(painter, clip, selection());
    drawButtonGround(painter);
    if (showsFocus())
        drawFocus(painter);
}

void MarkdownWidget::drawButtonGround(QPainter &painter) const {
    if (!m_hovered || isLink(m_hovered))
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_view->theme().shade(m_pressed ? pressedOpacity : hoverOpacity));
    painter.drawRoundedRect(m_hovered->areas.first(), buttonRadius, buttonRadius);
}

void MarkdownWidget::drawFocus(QPainter &painter) const {
    const std::optional<Target> target = focusedTarget();
    if (!target) {
        painter.fillRect(m_view->caretAt(selection().caret), m_view->theme().primary);
        return;
    }
    for (const QRectF &area : target->areas) {
        const QRectF ring = area.adjusted(-ringReach, -ringReach, ringReach, ringReach);
        drawRing(painter, ring & QRectF(0, 0, m_view->width(), m_view->height()), ringRadius,
                 m_view->theme().link);
    }
}

void MarkdownWidget::mousePressEvent(QMouseEvent *event) {
    leaveTarget();
    hover(event->position());
    m_pressed = event->button() == Qt::LeftButton ? m_hovered : std::nullopt;
    // A link may also be the beginning of what is selected.
    if (m_pressed && !isLink(m_pressed))
        return update();
    SelectableWidget::mousePressEvent(event);
}

void MarkdownWidget::mouseMoveEvent(QMouseEvent *event) {
    if (!m_pressed || isLink(m_pressed))
        SelectableWidget::mouseMoveEvent(event);
    hover(event->position());
}

void MarkdownWidget::mouseReleaseEvent(QMouseEvent *event) {
    SelectableWidget::mouseReleaseEvent(event);
    const std::optional<Target> pressed = std::exchange(m_pressed, std::nullopt);
    if (!pressed)
        return;
    update();
    const std::optional<Target> released = targetAt(event->position());
    if (isStill(released, pressed) && (selection().isEmpty() || !isLink(pressed)))
        press(*released);
}

void MarkdownWidget::mouseDoubleClickEvent(QMouseEvent *event) {
    // The first of the two clicks has pressed it.
    if (!targetAt(event->position()))
        SelectableWidget::mouseDoubleClickEvent(event);
}

void MarkdownWidget::followPointer() {
    if (underMouse())
        hover(mapFromGlobal(QPointF(QCursor::pos())));
}

void MarkdownWidget::leaveEvent(QEvent *) {
    hover({-1, -1});
}

void MarkdownWidget::hover(const QPointF &point) {
    const std::optional<Target> before = std::exchange(m_hovered, targetAt(point));
    if (m_hovered)
        setCursor(isLink(m_hovered) ? Qt::PointingHandCursor : Qt::ArrowCursor);
    else
        setCursor(m_view->isTextAt(inView(point).y()) ? Qt::IBeamCursor : Qt::ArrowCursor);
    if (before == m_hovered)
        return;
    if (!isStill(m_hovered, before))
        QToolTip::hideText();
    for (const std::optional<Target> &target : {before, m_hovered}) {
        if (target)
            update(inWidget(around(*target)).toAlignedRect());
    }
}

void MarkdownWidget::keyPressEvent(QKeyEvent *event) {
    const std::optional<Target> target = focusedTarget();
    const bool presses =
        event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_Space;
    if (target && presses) {
        if (!event->isAutoRepeat())
            press(*target);
        return;
    }
    const TextSelection before = selection();
    SelectableWidget::keyPressEvent(event);
    if (selection() != before)
        leaveTarget();
}

void MarkdownWidget::focusOutEvent(QFocusEvent *event) {
    if (!isPassing(event->reason()))
        leaveTarget();
    SelectableWidget::focusOutEvent(event);
}
