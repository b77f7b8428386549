#include "driver/Driver.h"

#include <QApplication>
#include <QGenericPlugin>
#include <QKeyEvent>
#include <QTextEdit>

#include <algorithm>
#include <chrono>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

void press(QWidget *widget, int key, const QString &text) {
    QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(widget, &down);
    QKeyEvent up(QEvent::KeyRelease, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(widget, &up);
}

} // namespace

Driver::Driver(const QString &orders) : m_orders(orders) {
    if (orders.startsWith(u"send="_s))
        m_toSend = orders.sliced(5).toInt();
    connect(&m_typing, &QTimer::timeout, this, &Driver::type);
    connect(&m_looking, &QTimer::timeout, this, &Driver::look);
    QCoreApplication::instance()->installEventFilter(this);
}

bool Driver::eventFilter(QObject *watched, QEvent *event) {
    if (!m_hasPainted && event->type() == QEvent::Paint && watched->isWidgetType() &&
        static_cast<QWidget *>(watched)->isWindow()) {
        m_hasPainted = true;
        QCoreApplication::instance()->removeEventFilter(this);
        // The whole window is painted and handed to the system when the event loop has its turn again.
        QMetaObject::invokeMethod(this, &Driver::painted, Qt::QueuedConnection);
    }
    return false;
}

void Driver::painted() {
    const std::chrono::nanoseconds now = std::chrono::steady_clock::now().time_since_epoch();
    std::printf("painted %lld\n", static_cast<long long>(now.count()));
    std::fflush(stdout);
    if (m_orders == u"quit"_s)
        QCoreApplication::quit();
    else if (m_orders == u"ready"_s)
        m_looking.start(50);
    else if (m_toSend > 0)
        m_typing.start(10);
}

void Driver::type() {
    QTextEdit *const target = field();
    if (!target)
        return;
    if (target->toPlainText().isEmpty()) {
        if (m_toSend-- == 0) {
            std::printf("sent\n");
            std::fflush(stdout);
            m_typing.stop();
            return;
        }
        press(target, Qt::Key_T, u"Tell me about your garden, and what the birds in it are doing."_s);
    }
    // Nothing happens while the program can't take a message; then the text stays.
    press(target, Qt::Key_Return, u"\r"_s);
}

void Driver::look() {
    const QWidgetList widgets = QApplication::allWidgets();
    const auto isReady = [](const QWidget *widget) { return widget->toolTip().endsWith(u": Ready"_s); };
    if (std::ranges::none_of(widgets, isReady))
        return;
    m_looking.stop();
    std::printf("ready\n");
    std::fflush(stdout);
}

QTextEdit *Driver::field() {
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget *widget : widgets) {
        auto *const edit = qobject_cast<QTextEdit *>(widget);
        if (edit && edit->isVisible() && edit->isEnabled() && !edit->isReadOnly())
            return edit;
    }
    return nullptr;
}

/// Makes the driver known to Qt under the name "benchmark".
class DriverPlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "driver.json")

public:
    QObject *create(const QString &, const QString &orders) override { return new Driver(orders); }
};

#include "Driver.moc"
