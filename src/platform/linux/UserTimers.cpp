#include "platform/linux/UserTimers.h"

#include "platform/AtomicFile.h"

#include <QDir>
#include <QStandardPaths>

#include <array>

using namespace Qt::StringLiterals;

namespace {

/// The events have their place in it.
constexpr auto timerForm = R"([Unit]
Description=When Ostrelin runs a schedule

[Timer]
%1AccuracySec=1s
Persistent=false

[Install]
WantedBy=timers.target
)"_L1;

/// The environment, the executable and the command have their places in it. An executable that is gone, since
/// the program was removed, is no failure. The colon keeps "$" from being a variable. A command's own path
/// may not have every character; an argument may, and nice(1) and test(1) need nothing but arguments.
constexpr auto serviceForm = R"([Unit]
Description=A scheduled run of Ostrelin

[Service]
Type=oneshot
%1ExecCondition=:/usr/bin/test -x %2
ExecStart=:/usr/bin/nice -n 10%3
CPUWeight=20
IOWeight=20
)"_L1;

/// A word of a unit file (systemd.syntax(7), "Quoting"): taken as it stands, but for "$" in a command line.
QString quoted(const QString &word) {
    QString text;
    for (const QChar character : word) {
        if (character.unicode() < 0x20 || character.unicode() == 0x7F) {
            text += u"\\x%1"_s.arg(character.unicode(), 2, 16, QChar(u'0'));
            continue;
        }
        if (character == u'\\' || character == u'"')
            text += u'\\';
        else if (character == u'%')
            text += u'%';
        text += character;
    }
    return u'"' + text + u'"';
}

/// A calendar event of systemd.time(7); nothing for a number that is no weekday.
QString calendarEvent(const CalendarInterval &interval) {
    static constexpr std::array weekdays{"Sun"_L1, "Mon"_L1, "Tue"_L1, "Wed"_L1,
                                         "Thu"_L1, "Fri"_L1, "Sat"_L1, "Sun"_L1};
    const auto twoDigits = [](qint64 number) { return u"%1"_s.arg(number, 2, 10, QChar(u'0')); };
    const QString time = u"*-*-* %1:%2:00"_s.arg(twoDigits(interval.hour), twoDigits(interval.minute));
    if (!interval.weekday)
        return time;
    const auto number = static_cast<size_t>(*interval.weekday);
    return number < weekdays.size() ? weekdays[number] + u' ' + time : QString();
}

QString timerUnit(const UserJob &job) {
    QString events;
    for (const CalendarInterval &interval : job.intervals) {
        const QString event = calendarEvent(interval);
        if (!event.isEmpty())
            events += u"OnCalendar="_s + event + u'\n';
    }
    return QString(timerForm).arg(events);
}

/// Where the person's data lies must be the same place for the job as for this process.
QString environmentLine() {
    const QString dataHome = qEnvironmentVariable("XDG_DATA_HOME");
    return dataHome.isEmpty() ? QString()
                              : u"Environment="_s + quoted(u"XDG_DATA_HOME="_s + dataHome) + u'\n';
}

QString serviceUnit(const UserJob &job) {
    QString words;
    for (const QString &word : job.command)
        words += u' ' + quoted(word);
    return QString(serviceForm).arg(environmentLine(), quoted(job.command.first()), words);
}

void write(const QString &path, const QString &text) {
    try {
        writeAtomically(path, text.toUtf8());
    } catch (const FileError &) {
    }
}

} // namespace

UserTimers::UserTimers(const QString &folder, const QString &systemctl)
    : m_folder(folder),
      m_systemctl(systemctl) {}

void UserTimers::bootOut(const QString &label) {
    m_systemctl.run({u"--user"_s, u"disable"_s, u"--now"_s, label + u".timer"_s});
}

void UserTimers::bootstrap(const UserJob &job) {
    QDir().mkpath(m_folder);
    removeAbandonedFiles(m_folder);
    write(m_folder + u'/' + job.label + u".timer"_s, timerUnit(job));
    write(m_folder + u'/' + job.label + u".service"_s, serviceUnit(job));
    m_systemctl.run({u"--user"_s, u"daemon-reload"_s});
    m_systemctl.run({u"--user"_s, u"enable"_s, u"--now"_s, job.label + u".timer"_s});
}

std::unique_ptr<UserJobs> UserJobs::ofSystem() {
    const QString configuration = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return std::make_unique<UserTimers>(configuration + u"/systemd/user"_s,
                                        QStandardPaths::findExecutable(u"systemctl"_s));
}
