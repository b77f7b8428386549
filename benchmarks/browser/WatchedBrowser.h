#pragma once

#include <QProcess>

/// Chromium with one page in a window that is nothing but the page, as large as the program's.
class WatchedBrowser {
public:
    /// Starts it with what `profile`, a folder, holds of an earlier start. Throws std::runtime_error if the
    /// system doesn't start it.
    WatchedBrowser(const QString &page, const QString &profile);

    /// Ends it, and waits until all its processes are gone.
    ~WatchedBrowser();
    WatchedBrowser(const WatchedBrowser &) = delete;
    WatchedBrowser &operator=(const WatchedBrowser &) = delete;

private:
    QProcess m_process;
};
