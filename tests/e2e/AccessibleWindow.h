#pragma once

#include "e2e/AccessibleNotices.h"
#include "support/SpokenItem.h"

#include <QDBusConnection>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

/// What an object of a window is, in the numbers of AT-SPI's AtspiRole.
enum class AccessibleRole : quint32 {
    checkBox = 7,
    comboBox = 11,
    label = 29,
    listItem = 32,
    menuItem = 35,
    pushButton = 43,
    radioButton = 44,
    spinButton = 52,
    text = 61,
    link = 88
};

/// Another program's window, read and driven as assistive technology does it: by AT-SPI over the
/// accessibility bus, through the names that are read aloud. It knows only what is showing. Main
/// thread; calls wait for the other program, and what it doesn't answer isn't there.
class AccessibleWindow {
public:
    /// The windows of that process. Nothing happens before the first question.
    explicit AccessibleWindow(qint64 processIdentifier);

    /// True if the program answers at all.
    bool answers();

    /// How long the program has taken at most for an answer, in milliseconds; one that didn't come within
    /// five seconds counts as those.
    qint64 slowestAnswer() const { return m_slowestAnswer; }

    /// The names of all objects of that role that are showing, from the top to the bottom.
    QStringList names(AccessibleRole role);

    /// The same without what takes no keyboard: the rows of a list, but not the lines of a text.
    QStringList namesOfControls(AccessibleRole role);

    /// True if an object with that name and role is showing.
    bool shows(const QString &name, AccessibleRole role);

    /// Waits until shows(), or until no such object shows. False after that many milliseconds.
    bool waitFor(const QString &name, AccessibleRole role, int milliseconds = 15'000);
    bool waitUntilGone(const QString &name, AccessibleRole role, int milliseconds = 15'000);

    /// Presses the button, or chooses the item, of that name. False if none is showing.
    bool press(const QString &name, AccessibleRole role = AccessibleRole::pushButton);

    /// Clicks on the item of that name with the right mouse button. False if none is showing.
    bool askForMenu(const QString &name, AccessibleRole role);

    /// True if the item of that name is showing, and checked or selected.
    bool isChosen(const QString &name, AccessibleRole role);

    /// Replaces the text of the field of that name. False if none is showing.
    bool setText(const QString &name, const QString &text);

    /// The text of the field of that name; nothing if none is showing.
    std::optional<QString> text(const QString &name);

    /// The texts of the messages in the list that "You" or "Ostrelin" said, as far as they are in sight.
    QStringList said(const QString &speaker);

    /// Gives the keyboard to the field of that name. False if none is showing.
    bool focus(const QString &name);

    /// True if the field of that name is showing, and has the keyboard.
    bool hasFocus(const QString &name);

    /// What has the keyboard, by name, of a list the list itself; empty if nothing has it.
    QString nameOfFocus();

    /// Everything that is showing, as it is read aloud.
    SpokenItem contents();

    /// What the program tells from now on.
    std::unique_ptr<AccessibleNotices> notices();

    /// Types a text, or the key with that X11 keysym, into the window that has the keyboard.
    bool type(const QString &text);
    bool typeKey(int keysym);

    /// The same while the control key is held down.
    bool typeWithControl(int keysym);

private:
    struct Item {
        QString path;
        QString name;
        AccessibleRole role;
    };
    enum class Walk { goOn, end };

    /// States of an object, in the bits of AT-SPI's AtspiStateType.
    static constexpr quint32 checked = 1u << 4;
    static constexpr quint32 focusable = 1u << 11;
    static constexpr quint32 focused = 1u << 12;
    static constexpr quint32 selected = 1u << 23;
    static constexpr quint32 showing = 1u << 25;

    bool connectToProgram();
    bool visit(const QString &path, const std::function<Walk(const Item &)> &visitor);
    Item itemAt(const QString &path);
    void fill(SpokenItem &item, const QString &path);
    std::optional<Item> find(const QString &name, AccessibleRole role);
    bool isShowing(const QString &path) { return (statesOf(path) & showing) != 0; }
    quint32 statesOf(const QString &path);
    QStringList childrenOf(const QString &path);
    QVariantList callService(const QString &service, const QString &path, const QString &interface,
                             const QString &method, const QVariantList &arguments = {});
    QVariantList call(const QString &path, const QString &interface, const QString &method,
                      const QVariantList &arguments = {});
    QVariant property(const QString &path, const QString &interface, const QString &name);
    bool generateKey(int keysym, const QString &text, quint32 kind);
    bool callDevices(const QString &method, const QVariantList &arguments);

    qint64 m_processIdentifier;
    QDBusConnection m_bus;
    QString m_service;
    qint64 m_slowestAnswer = 0;
};
