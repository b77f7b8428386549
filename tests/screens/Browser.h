#pragma once

#include <QDesktopServices>
#include <QObject>
#include <QUrl>

/// Takes the addresses that would go to the browser.
class Browser : public QObject {
    Q_OBJECT

public:
    Browser() { QDesktopServices::setUrlHandler(QStringLiteral("https"), this, "open"); }
    ~Browser() override { QDesktopServices::unsetUrlHandler(QStringLiteral("https")); }

    QList<QUrl> opened;

public Q_SLOTS:
    void open(const QUrl &address) { opened.append(address); }
};
