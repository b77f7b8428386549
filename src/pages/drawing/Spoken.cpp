#include "pages/drawing/Spoken.h"

#include <QAccessibleWidget>
#include <QWidget>

namespace {

class SpokenInterface : public QAccessibleWidget {
public:
    SpokenInterface(QWidget *widget, const Spoken &spoken) : QAccessibleWidget(widget, spoken.spokenRole()) {}

    QString text(QAccessible::Text kind) const override {
        // Asked anew each time: a widget in the midst of its destruction has nothing to say any more.
        const auto *spoken = dynamic_cast<const Spoken *>(object());
        return kind == QAccessible::Name && spoken ? spoken->spokenName() : QAccessibleWidget::text(kind);
    }

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        const auto *spoken = dynamic_cast<const Spoken *>(object());
        state.modal = state.modal || (spoken && spoken->isSpokenModal());
        return state;
    }
};

QAccessibleInterface *interfaceOf(const QString &, QObject *object) {
    auto *widget = qobject_cast<QWidget *>(object);
    const auto *spoken = dynamic_cast<const Spoken *>(object);
    return widget && spoken ? new SpokenInterface(widget, *spoken) : nullptr;
}

} // namespace

void Spoken::install() {
    static const bool installed = [] {
        QAccessible::installFactory(interfaceOf);
        return true;
    }();
    Q_UNUSED(installed);
}
