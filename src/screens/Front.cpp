#include "screens/Front.h"

#include <QWidget>

void bringToFront(QWidget &window, const QString &activationToken) {
    // Qt on Wayland takes the token from there at the next activation, and removes it.
    if (!activationToken.isEmpty())
        qputenv("XDG_ACTIVATION_TOKEN", activationToken.toUtf8());
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}
