#include "support/PrivateBus.h"

#include <QFile>
#include <QStandardPaths>

#include <chrono>
#include <future>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

// Everybody may do everything, and nothing is started on demand.
constexpr auto configuration =
    R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
  "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>%1</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)"_L1;

constexpr std::chrono::seconds longestStart(30);

} // namespace

PrivateBus::PrivateBus() : m_address("unix:path="_L1 + m_folder.filePath(u"bus"_s)) {
    QFile file(m_folder.filePath(u"bus.conf"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(QString(configuration).arg(m_address).toUtf8()) < 0)
        throw std::runtime_error("the configuration of the bus can't be written");
    file.close();
    start();
}

void PrivateBus::die() {
    m_daemon.reset();
}

void PrivateBus::start() {
    QFile::remove(m_folder.filePath(u"bus"_s));
    // It prints its address when it is ready to be called.
    const auto ready = std::make_shared<std::promise<void>>();
    m_daemon = std::make_unique<ChildProcess>(
        ChildProcess::Launch{.executable = QStandardPaths::findExecutable(u"dbus-daemon"_s),
                             .arguments = {u"--nofork"_s, u"--nopidfile"_s, u"--print-address"_s,
                                           "--config-file="_L1 + m_folder.filePath(u"bus.conf"_s)},
                             .environment = QProcessEnvironment::systemEnvironment(),
                             .onOutput =
                                 [ready, told = false](QByteArrayView) mutable {
                                     if (!std::exchange(told, true))
                                         ready->set_value();
                                 },
                             .onError = {},
                             .onExit = {}});
    if (ready->get_future().wait_for(longestStart) != std::future_status::ready)
        throw std::runtime_error("the bus doesn't start");
}
