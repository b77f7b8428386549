#include "browser/WatchedBrowser.h"

#include "browser/Offspring.h"

#include <chrono>
#include <stdexcept>
#include <thread>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// Root can't have the sandbox, and nobody else could read the memory of what is in it. Without an image
/// processor the browser draws as cheaply as it can, and it has nothing to do but the page.
QStringList arguments(const QString &page, const QString &profile) {
    return {u"--no-sandbox"_s,
            u"--test-type"_s, // keeps the warning of the missing sandbox out of the window
            u"--disable-gpu"_s,
            u"--user-data-dir="_s + profile,
            u"--no-first-run"_s,
            u"--disable-background-networking"_s,
            u"--disable-component-update"_s,
            u"--disable-default-apps"_s,
            u"--disable-extensions"_s,
            u"--disable-sync"_s,
            u"--window-position=0,0"_s,
            u"--window-size=1100,760"_s,
            u"--app="_s + page};
}

} // namespace

WatchedBrowser::WatchedBrowser(const QString &page, const QString &profile) {
    m_process.setStandardOutputFile(QProcess::nullDevice());
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_process.start(u"chromium"_s, arguments(page, profile));
    if (!m_process.waitForStarted())
        throw std::runtime_error("chromium can't be started");
}

WatchedBrowser::~WatchedBrowser() {
    m_process.terminate();
    if (!m_process.waitForFinished(10'000)) {
        m_process.kill();
        m_process.waitForFinished();
    }
    for (int tries = 0; tries < 500 && offspringCount() > 0; ++tries)
        std::this_thread::sleep_for(20ms);
}
