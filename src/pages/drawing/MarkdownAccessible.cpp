#include "pages/drawing/MarkdownAccessible.h"

#include "pages/drawing/LinkAddress.h"
#include "pages/drawing/MarkdownWidget.h"

#include <QAccessibleWidget>
#include <QPointer>

namespace {

using Interfaces = std::vector<QAccessible::Id>;

QAccessibleInterface *interfaceAt(const Interfaces &interfaces, int index) {
    const bool isInside = index >= 0 && index < int(interfaces.size());
    return isInside ? QAccessible::accessibleInterface(interfaces[size_t(index)]) : nullptr;
}

void forget(Interfaces &interfaces, size_t first) {
    for (size_t index = first; index < interfaces.size(); ++index)
        QAccessible::deleteAccessibleInterface(interfaces[index]);
    interfaces.resize(std::min(first, interfaces.size()));
}

/// A block or a part of one, as it was when somebody asked for it.
class PartInterface : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    /// `origin` is that of the block in the widget.
    PartInterface(MarkdownWidget *widget, QAccessibleInterface *parent, const SpokenPart &part,
                  const QPointF &origin)
        : m_widget(widget),
          m_parent(parent),
          m_part(part),
          m_origin(origin) {}
    ~PartInterface() override { forget(m_children, 0); }

    bool isValid() const override { return m_widget; }
    QObject *object() const override { return nullptr; }
    QWindow *window() const override { return m_widget ? m_widget->window()->windowHandle() : nullptr; }
    QAccessibleInterface *parent() const override { return m_parent; }

    QAccessible::Role role() const override { return m_part.role; }
    QString text(QAccessible::Text kind) const override {
        const bool isLink = m_part.role == QAccessible::Link && m_part.target;
        if (kind == QAccessible::Description && isLink)
            return shownAddress(m_part.target->address);
        return kind == QAccessible::Name ? m_part.name : QString();
    }
    void setText(QAccessible::Text, const QString &) override {}

    QRect rect() const override {
        const QRect area = place();
        return m_widget ? QRect(m_widget->mapToGlobal(area.topLeft()), area.size()) : QRect();
    }

    QAccessible::State state() const override {
        QAccessible::State state;
        state.readOnly = true;
        state.linked = m_part.role == QAccessible::Link;
        state.focusable = m_part.target.has_value();
        state.focused = state.focusable && m_widget && m_widget->hasFocus() &&
                        m_widget->focusedTarget() == placedTarget();
        state.invisible = !m_widget || !m_widget->isVisible();
        state.offscreen = !state.invisible && !m_widget->visibleRegion().intersects(place());
        return state;
    }

    int childCount() const override { return int(m_part.parts.size()); }
    QAccessibleInterface *child(int index) const override {
        if (m_children.empty()) {
            for (const SpokenPart &part : m_part.parts)
                m_children.push_back(QAccessible::registerAccessibleInterface(
                    new PartInterface(m_widget, const_cast<PartInterface *>(this), part, m_origin)));
        }
        return interfaceAt(m_children, index);
    }
    QAccessibleInterface *childAt(int x, int y) const override {
        for (int index = 0; index < childCount(); ++index) {
            if (child(index)->rect().contains(x, y))
                return child(index);
        }
        return nullptr;
    }
    int indexOfChild(const QAccessibleInterface *searched) const override {
        for (int index = 0; index < childCount(); ++index) {
            if (child(index) == searched)
                return index;
        }
        return -1;
    }

    QStringList actionNames() const override {
        return m_part.target ? QStringList(pressAction()) : QStringList();
    }
    void doAction(const QString &name) override {
        if (m_widget && m_part.target && name == pressAction())
            m_widget->press(*m_part.target);
    }
    QStringList keyBindingsForAction(const QString &) const override { return {}; }

    void *interface_cast(QAccessible::InterfaceType type) override {
        const bool isAction = type == QAccessible::ActionInterface && m_part.target;
        return isAction ? static_cast<QAccessibleActionInterface *>(this) : nullptr;
    }

private:
    /// In the widget.
    QRect place() const {
        return m_widget ? m_widget->inWidget(m_part.area.translated(m_origin)).toAlignedRect() : QRect();
    }

    std::optional<Target> placedTarget() const {
        std::optional<Target> target = m_part.target;
        if (target)
            *target = moved(*target, m_origin);
        return target;
    }

    const QPointer<MarkdownWidget> m_widget;
    QAccessibleInterface *const m_parent;
    const SpokenPart m_part;
    const QPointF m_origin;
    mutable Interfaces m_children;
};

/// The part that has the focus, or one in it that has; null if there is none.
QAccessibleInterface *focusedPart(QAccessibleInterface *part) {
    if (!part || part->state().focused)
        return part;
    for (int index = 0; index < part->childCount(); ++index) {
        if (QAccessibleInterface *focused = focusedPart(part->child(index)))
            return focused;
    }
    return nullptr;
}

/// Links and buttons are named within what they belong to.
void appendNames(const SpokenPart &part, QStringList &names) {
    if (!part.name.isEmpty())
        names.append(part.name);
    for (const SpokenPart &inner : part.parts) {
        if (!inner.target)
            appendNames(inner, names);
    }
}

class WidgetInterface : public QAccessibleWidget {
public:
    explicit WidgetInterface(MarkdownWidget *widget)
        : QAccessibleWidget(widget, QAccessible::StaticText),
          m_following(QObject::connect(widget, &MarkdownWidget::blocksChanged, widget,
                                       [this](int first) { forget(m_blocks, size_t(first)); })) {}
    ~WidgetInterface() override {
        QObject::disconnect(m_following);
        forget(m_blocks, 0);
    }

    QString text(QAccessible::Text kind) const override {
        if (kind != QAccessible::Name)
            return QAccessibleWidget::text(kind);
        QStringList names;
        if (!widget()->accessibleName().isEmpty())
            names.append(widget()->accessibleName());
        for (size_t index = 0; index < view().blockCount(); ++index)
            appendNames(view().block(index).spoken(), names);
        return names.join(u'\n');
    }

    int childCount() const override { return int(view().blockCount()); }
    QAccessibleInterface *child(int index) const override {
        while (int(m_blocks.size()) <= index && m_blocks.size() < view().blockCount()) {
            const size_t next = m_blocks.size();
            m_blocks.push_back(QAccessible::registerAccessibleInterface(
                new PartInterface(markdownWidget(), const_cast<WidgetInterface *>(this),
                                  view().block(next).spoken(), view().originOf(next))));
        }
        return interfaceAt(m_blocks, index);
    }
    QAccessibleInterface *childAt(int x, int y) const override {
        const QPoint point = widget()->mapFromGlobal(QPoint(x, y));
        const double height = markdownWidget()->inView(point).y();
        return widget()->rect().contains(point) ? child(int(view().blockAt(height))) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface *searched) const override {
        for (size_t index = 0; index < m_blocks.size(); ++index) {
            if (interfaceAt(m_blocks, int(index)) == searched)
                return int(index);
        }
        return -1;
    }
    QAccessibleInterface *focusChild() const override {
        const std::optional<Target> target = markdownWidget()->focusedTarget();
        return target ? focusedPart(child(int(view().blockAt(target->areas.first().top())))) : nullptr;
    }

private:
    MarkdownWidget *markdownWidget() const { return static_cast<MarkdownWidget *>(widget()); }
    const MarkdownView &view() const { return markdownWidget()->view(); }

    const QMetaObject::Connection m_following;
    mutable Interfaces m_blocks; ///< as many as somebody has asked for
};

QAccessibleInterface *interfaceOf(const QString &, QObject *object) {
    auto *widget = qobject_cast<MarkdownWidget *>(object);
    return widget ? new WidgetInterface(widget) : nullptr;
}

} // namespace

void markdownAccessible::install() {
    static const bool installed = [] {
        QAccessible::installFactory(interfaceOf);
        return true;
    }();
    Q_UNUSED(installed);
}

void markdownAccessible::tellFocus(MarkdownWidget *widget) {
    if (!QAccessible::isActive())
        return;
    if (QAccessibleInterface *focused = QAccessible::queryAccessibleInterface(widget)->focusChild()) {
        QAccessibleEvent event(focused, QAccessible::Focus);
        QAccessible::updateAccessibility(&event);
    }
}
