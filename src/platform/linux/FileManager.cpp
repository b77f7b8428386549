#include "platform/FileManager.h"

#include "platform/linux/Bus.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

void openFolderOf(const QString &path) {
    QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(path).absolutePath()));
}

} // namespace

void revealFile(const QString &path) {
    const QDBusConnection bus = sessionBus();
    if (!bus.isConnected()) {
        openFolderOf(path);
        return;
    }
    // The File Manager DBus Interface of freedesktop.org: the files' addresses, and a startup id.
    QDBusMessage call =
        QDBusMessage::createMethodCall(u"org.freedesktop.FileManager1"_s, u"/org/freedesktop/FileManager1"_s,
                                       u"org.freedesktop.FileManager1"_s, u"ShowItems"_s);
    const QUrl address = QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath());
    call.setArguments({QStringList{address.toString(QUrl::FullyEncoded)}, QString()});
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), QCoreApplication::instance());
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, path] {
        watcher->deleteLater();
        if (watcher->isError())
            openFolderOf(path);
    });
}
