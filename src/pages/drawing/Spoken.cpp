#include "pages/drawing/Spoken.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QWidget>

namespace {

class SpokenInterface : public QAccessibleWidget {
public:
    SpokenInterface(QWidget *widget, const Spoken &spoken) : QAccessibleWidget(widget, spoken.spokenRole()) {}

    QString text(QAccessible::Text kind) const override {
        // Asked anew each time: a widget in the midst of its destruction has nothing to say any more.
        const auto *spoken = dynamic_cast<const Spoken *>(object());
        if (spoken && kind == QAccessible::Name)
            return spoken->spokenName();
        if (spoken && kind == QAccessible::Value)
            return spoken->spokenValue();
        const bool asksMore = spoken && kind == QAccessible::Description;
        const QString description = asksMore ? spoken->spokenDescription() : QString();
        return description.isEmpty() ? QAccessibleWidget::text(kind) : description;
    }

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        const auto *spoken = dynamic_cast<const Spoken *>(object());
        state.modal = state.modal || (spoken && spoken->isSpokenModal());
        const Spoken::Fold fold = spoken ? spoken->spokenFold() : Spoken::Fold::none;
        // Some have no place in the window's chain of focus, and can be reached by keys all the same.
        state.focusable = state.focusable || button();
        state.expandable = fold != Spoken::Fold::none;
        state.expanded = fold == Spoken::Fold::unfolded;
        state.collapsed = fold == Spoken::Fold::folded;
        return state;
    }

    QStringList actionNames() const override {
        QStringList names = QAccessibleWidget::actionNames();
        if (button())
            names.prepend(pressAction());
        return names;
    }

    void doAction(const QString &name) override {
        if (button() && name == pressAction())
            button()->click();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    QAbstractButton *button() const { return qobject_cast<QAbstractButton *>(object()); }
};

QAccessibleInterface *interfaceOf(const QString &, QObject *object) {
    auto *widget = qobject_cast<QWidget *>(object);
    const auto *spoken = dynamic_cast<const Spoken *>(object);
    return widget && spoken ? new SpokenInterface(widget, *spoken) : nullptr;
}

} // namespace

void Spoken::tellFold(QWidget *widget) {
    if (!QAccessible::isActive())
        return;
    QAccessible::State changed;
    changed.expanded = true;
    changed.collapsed = true;
    QAccessibleStateChangeEvent event(widget, changed);
    QAccessible::updateAccessibility(&event);
}

void Spoken::install() {
    static const bool installed = [] {
        QAccessible::installFactory(interfaceOf);
        return true;
    }();
    Q_UNUSED(installed);
}
