#include "e2e/AccessibleWindow.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QElapsedTimer>
#include <QTest>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr int answerTimeout = 5000;

const QString accessible = u"org.a11y.atspi.Accessible"_s;
const QString action = u"org.a11y.atspi.Action"_s;
const QString root = u"/org/a11y/atspi/accessible/root"_s;
const QString registry = u"org.a11y.atspi.Registry"_s;

QVariantList ask(const QDBusConnection &bus, const QDBusMessage &question) {
    const QDBusMessage answer = bus.call(question, QDBus::Block, answerTimeout);
    return answer.type() == QDBusMessage::ReplyMessage ? answer.arguments() : QVariantList();
}

/// The bus of the accessibility service, which the session bus names.
QDBusConnection accessibilityBus() {
    const QVariantList address = ask(QDBusConnection::sessionBus(),
                                     QDBusMessage::createMethodCall(u"org.a11y.Bus"_s, u"/org/a11y/bus"_s,
                                                                    u"org.a11y.Bus"_s, u"GetAddress"_s));
    const QString name = u"accessibility"_s;
    return address.isEmpty() ? QDBusConnection(name)
                             : QDBusConnection::connectToBus(address.first().toString(), name);
}

bool isControl(AccessibleRole role) {
    constexpr std::array controls{
        AccessibleRole::checkBox,    AccessibleRole::comboBox,   AccessibleRole::listItem,
        AccessibleRole::link,        AccessibleRole::menuItem,   AccessibleRole::pushButton,
        AccessibleRole::radioButton, AccessibleRole::spinButton, AccessibleRole::text};
    return std::find(controls.begin(), controls.end(), role) != controls.end();
}

/// An array of (bus name, object path).
QList<std::pair<QString, QString>> references(const QVariantList &answer) {
    QList<std::pair<QString, QString>> found;
    if (answer.isEmpty())
        return found;
    const auto list = answer.first().value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        QString service;
        QDBusObjectPath path;
        list.beginStructure();
        list >> service >> path;
        list.endStructure();
        found.append({service, path.path()});
    }
    return found;
}

} // namespace

AccessibleWindow::AccessibleWindow(qint64 processIdentifier)
    : m_processIdentifier(processIdentifier),
      m_bus(accessibilityBus()) {}

bool AccessibleWindow::answers() {
    return connectToProgram() && property(root, accessible, u"ChildCount"_s).isValid();
}

QStringList AccessibleWindow::names(AccessibleRole role) {
    QStringList names;
    visit(root, [&](const Item &item) {
        if (item.role == role)
            names.append(item.name);
        return Walk::goOn;
    });
    return names;
}

QStringList AccessibleWindow::namesOfControls(AccessibleRole role) {
    QStringList names;
    visit(root, [&](const Item &item) {
        if (item.role == role && (statesOf(item.path) & focusable) != 0)
            names.append(item.name);
        return Walk::goOn;
    });
    return names;
}

bool AccessibleWindow::shows(const QString &name, AccessibleRole role) {
    return find(name, role).has_value();
}

bool AccessibleWindow::waitFor(const QString &name, AccessibleRole role, int milliseconds) {
    return QTest::qWaitFor([&] { return shows(name, role); }, milliseconds);
}

bool AccessibleWindow::waitUntilGone(const QString &name, AccessibleRole role, int milliseconds) {
    return QTest::qWaitFor([&] { return !shows(name, role); }, milliseconds);
}

bool AccessibleWindow::press(const QString &name, AccessibleRole role) {
    const auto item = find(name, role);
    if (!item)
        return false;
    const int count = property(item->path, action, u"NActions"_s).toInt();
    for (int index = 0; index < count; ++index) {
        const QString actionName = call(item->path, action, u"GetName"_s, {index}).value(0).toString();
        if (actionName == u"Press"_s || actionName == u"Toggle"_s)
            return call(item->path, action, u"DoAction"_s, {index}).value(0).toBool();
    }
    return false;
}

bool AccessibleWindow::askForMenu(const QString &name, AccessibleRole role) {
    const auto item = find(name, role);
    if (!item)
        return false;
    constexpr quint32 onScreen = 0;
    const QVariantList answer = call(item->path, u"org.a11y.atspi.Component"_s, u"GetExtents"_s, {onScreen});
    QRect area;
    if (!answer.isEmpty())
        answer.first().value<QDBusArgument>() >> area;
    const QPoint middle = area.center();
    return callDevices(u"GenerateMouseEvent"_s, {middle.x(), middle.y(), u"b3c"_s});
}

bool AccessibleWindow::isChosen(const QString &name, AccessibleRole role) {
    const auto item = find(name, role);
    return item && (statesOf(item->path) & (checked | selected)) != 0;
}

bool AccessibleWindow::setText(const QString &name, const QString &text) {
    const auto item = find(name, AccessibleRole::text);
    return item &&
           call(item->path, u"org.a11y.atspi.EditableText"_s, u"SetTextContents"_s, {text}).value(0).toBool();
}

std::optional<QString> AccessibleWindow::text(const QString &name) {
    const auto item = find(name, AccessibleRole::text);
    if (!item)
        return std::nullopt;
    return call(item->path, u"org.a11y.atspi.Text"_s, u"GetText"_s, {0, -1}).value(0).toString();
}

QStringList AccessibleWindow::said(const QString &speaker) {
    QStringList texts;
    bool isInRow = false;
    visit(root, [&](const Item &item) {
        // The parts of a row come after it; one that is still being thought about has no text.
        if (item.role == AccessibleRole::listItem)
            isInRow = item.name == speaker;
        else if (isInRow && item.role == AccessibleRole::label)
            texts.append(item.name);
        return Walk::goOn;
    });
    return texts;
}

bool AccessibleWindow::focus(const QString &name) {
    const auto item = find(name, AccessibleRole::text);
    return item && call(item->path, u"org.a11y.atspi.Component"_s, u"GrabFocus"_s).value(0).toBool();
}

bool AccessibleWindow::hasFocus(const QString &name) {
    const auto item = find(name, AccessibleRole::text);
    return item && (statesOf(item->path) & focused) != 0;
}

bool AccessibleWindow::type(const QString &text) {
    constexpr quint32 wholeString = 4;
    return generateKey(0, text, wholeString);
}

bool AccessibleWindow::typeKey(int keysym) {
    constexpr quint32 pressAndRelease = 3;
    return generateKey(keysym, {}, pressAndRelease);
}

bool AccessibleWindow::typeWithControl(int keysym) {
    constexpr int controlKeycode = 37; // of the usual keyboard of an X11 display
    constexpr quint32 pressOnly = 0;
    constexpr quint32 releaseOnly = 1;
    return generateKey(controlKeycode, {}, pressOnly) && typeKey(keysym) &&
           generateKey(controlKeycode, {}, releaseOnly);
}

bool AccessibleWindow::generateKey(int keysym, const QString &text, quint32 kind) {
    return callDevices(u"GenerateKeyboardEvent"_s, {keysym, text, kind});
}

bool AccessibleWindow::callDevices(const QString &method, const QVariantList &arguments) {
    QDBusMessage message =
        QDBusMessage::createMethodCall(registry, u"/org/a11y/atspi/registry/deviceeventcontroller"_s,
                                       u"org.a11y.atspi.DeviceEventController"_s, method);
    message.setArguments(arguments);
    return m_bus.call(message, QDBus::Block, answerTimeout).type() == QDBusMessage::ReplyMessage;
}

bool AccessibleWindow::connectToProgram() {
    if (!m_service.isEmpty())
        return true;
    for (const auto &[service, path] :
         references(callService(registry, root, accessible, u"GetChildren"_s))) {
        const QVariantList process =
            callService(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s,
                        u"GetConnectionUnixProcessID"_s, {service});
        if (process.value(0).toLongLong() == m_processIdentifier)
            m_service = service;
    }
    return !m_service.isEmpty();
}

std::optional<AccessibleWindow::Item> AccessibleWindow::find(const QString &name, AccessibleRole role) {
    std::optional<Item> found;
    visit(root, [&](const Item &item) {
        if (item.role != role || item.name != name)
            return Walk::goOn;
        found = item;
        return Walk::end;
    });
    return found;
}

bool AccessibleWindow::visit(const QString &path, const std::function<Walk(const Item &)> &visitor) {
    if (!connectToProgram())
        return true;
    for (const QString &child : childrenOf(path)) {
        // What isn't showing has no part that is.
        if (!isShowing(child))
            continue;
        const Item item = itemAt(child);
        if (visitor(item) == Walk::end || !visit(child, visitor))
            return false;
    }
    return true;
}

AccessibleWindow::Item AccessibleWindow::itemAt(const QString &path) {
    return {path, property(path, accessible, u"Name"_s).toString(),
            AccessibleRole(call(path, accessible, u"GetRole"_s).value(0).toUInt())};
}

QString AccessibleWindow::nameOfFocus() {
    QString name;
    visit(root, [&](const Item &item) {
        // The current item of a list says so wherever the keyboard is; the list itself knows better.
        if (item.role == AccessibleRole::listItem || (statesOf(item.path) & focused) == 0)
            return Walk::goOn;
        name = item.name;
        return Walk::end;
    });
    return name;
}

SpokenItem AccessibleWindow::contents() {
    SpokenItem all;
    if (connectToProgram())
        fill(all, root);
    return all;
}

void AccessibleWindow::fill(SpokenItem &item, const QString &path) {
    for (const QString &child : childrenOf(path)) {
        if (!isShowing(child))
            continue;
        const Item found = itemAt(child);
        SpokenItem inner{.role = QString::number(quint32(found.role)),
                         .name = found.name,
                         .description = property(child, accessible, u"Description"_s).toString(),
                         .takesFocus = (statesOf(child) & focusable) != 0};
        fill(inner, child);
        // Lists of a text and the rows of the messages are to be read.
        inner.isControl =
            isControl(found.role) && (found.role != AccessibleRole::listItem || inner.takesFocus);
        item.items.append(inner);
    }
}

std::unique_ptr<AccessibleNotices> AccessibleWindow::notices() {
    return connectToProgram() ? std::make_unique<AccessibleNotices>(m_bus, m_service) : nullptr;
}

quint32 AccessibleWindow::statesOf(const QString &path) {
    const QVariantList answer = call(path, accessible, u"GetState"_s);
    if (answer.isEmpty())
        return 0;
    QList<quint32> words;
    answer.first().value<QDBusArgument>() >> words;
    return words.value(0);
}

QStringList AccessibleWindow::childrenOf(const QString &path) {
    QStringList paths;
    for (const auto &reference : references(call(path, accessible, u"GetChildren"_s)))
        paths.append(reference.second);
    return paths;
}

QVariantList AccessibleWindow::callService(const QString &service, const QString &path,
                                           const QString &interface, const QString &method,
                                           const QVariantList &arguments) {
    QDBusMessage question = QDBusMessage::createMethodCall(service, path, interface, method);
    question.setArguments(arguments);
    return ask(m_bus, question);
}

QVariantList AccessibleWindow::call(const QString &path, const QString &interface, const QString &method,
                                    const QVariantList &arguments) {
    QElapsedTimer timer;
    timer.start();
    const QVariantList answer = callService(m_service, path, interface, method, arguments);
    m_slowestAnswer = std::max(m_slowestAnswer, timer.elapsed());
    return answer;
}

QVariant AccessibleWindow::property(const QString &path, const QString &interface, const QString &name) {
    const QVariantList answer = call(path, u"org.freedesktop.DBus.Properties"_s, u"Get"_s, {interface, name});
    return answer.isEmpty() ? QVariant() : answer.first().value<QDBusVariant>().variant();
}
