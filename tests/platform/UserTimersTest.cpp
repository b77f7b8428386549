#include "platform/linux/UserTimers.h"

#include "support/EnvironmentVariable.h"
#include "support/RecordingCommand.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>

#include <algorithm>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QString label = u"com.quennarbel.ostrelin.schedule.6D3A1C52-7C3B-4C0E-9B55-0D2F7E9F3B11"_s;
const QString id = u"6D3A1C52-7C3B-4C0E-9B55-0D2F7E9F3B11"_s;

/// Names that mean something to shells, to unit files, or to both.
const QStringList oddNames{
    u"plain"_s,       u"two words"_s,  u"100%"_s,        u"%h %%"_s,         u"$HOME ${HOME} $$"_s,
    u"a \"quote\""_s, u"it's"_s,       u"back\\slash"_s, u"\\x41\\\\"_s,     u"; && |"_s,
    u"a=b"_s,         u"Grüße 日本"_s, u" - @:+!"_s,     u"tab\tline\nend"_s};

class UserTimersTest : public ::testing::Test {
protected:
    QString unit(const QString &kind) const { return units() + u'/' + label + u'.' + kind; }
    QString units() const { return configuration.filePath(u"systemd/user"_s); }

    QStringList linesOf(const QString &kind) const {
        QFile file(unit(kind));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return QString::fromUtf8(file.readAll()).split(u'\n');
    }

    static UserJob jobOf(const QList<CalendarInterval> &intervals, const QString &executable) {
        return {label, {executable, u"--run-schedule"_s, id}, intervals};
    }

    /// What the service manager's own checker has to say of the two units.
    QByteArray complaints() const {
        const EnvironmentVariable runtime("XDG_RUNTIME_DIR", configuration.path().toLocal8Bit());
        QProcess checker;
        checker.setProcessChannelMode(QProcess::MergedChannels);
        checker.start(u"systemd-analyze"_s, {u"--user"_s, u"verify"_s, unit(u"timer"_s), unit(u"service"_s)});
        EXPECT_TRUE(checker.waitForFinished());
        return (checker.exitCode() == 0 ? "" : "refused ") + checker.readAll();
    }

    /// When the timer elapses first after that moment, as the service manager reckons.
    QString nextElapse(const QString &baseTime) const {
        QStringList earliest;
        for (const QString &line : linesOf(u"timer"_s).filter(u"OnCalendar="_s)) {
            QProcess reckoner;
            reckoner.start(u"systemd-analyze"_s,
                           {u"calendar"_s, u"--base-time"_s, baseTime, line.sliced(line.indexOf(u'=') + 1)});
            EXPECT_TRUE(reckoner.waitForFinished());
            static const QRegularExpression moment(u"Next elapse: ... ([-0-9]+ [:0-9]+) UTC"_s);
            earliest += moment.match(QString::fromUtf8(reckoner.readAll())).captured(1);
        }
        earliest.sort();
        return earliest.value(0);
    }

    EnvironmentVariable zone{"TZ", "UTC"};
    EnvironmentVariable dataHome{"XDG_DATA_HOME", ""};
    QTemporaryDir configuration;
    RecordingCommand systemctl{u"systemctl"_s};
    UserTimers timers{units(), systemctl.path()};
};

} // namespace

TEST_F(UserTimersTest, whatAKilledWriterLeftIsRemovedOnceItIsOld) {
    ASSERT_TRUE(QDir().mkpath(units()));
    QFile left(units() + u"/.ostrelin-0123.tmp"_s);
    ASSERT_TRUE(left.open(QIODevice::WriteOnly));
    ASSERT_TRUE(
        left.setFileTime(QDateTime::currentDateTime().addSecs(-3'700), QFileDevice::FileModificationTime));
    timers.bootstrap(jobOf({{.hour = 9, .minute = 5}}, u"/opt/ostrelin"_s));
    EXPECT_FALSE(left.exists());
}

TEST_F(UserTimersTest, theUnitsSayWhatIsStartedAndWhen) {
    timers.bootstrap(jobOf({{.hour = 9, .minute = 5}}, u"/opt/ostrelin"_s));
    EXPECT_EQ(linesOf(u"timer"_s), (QStringList{u"[Unit]"_s, u"Description=When Ostrelin runs a schedule"_s,
                                                QString(), u"[Timer]"_s, u"OnCalendar=*-*-* 09:05:00"_s,
                                                u"AccuracySec=1s"_s, u"Persistent=false"_s, QString(),
                                                u"[Install]"_s, u"WantedBy=timers.target"_s, QString()}));
    EXPECT_EQ(
        linesOf(u"service"_s),
        (QStringList{u"[Unit]"_s, u"Description=A scheduled run of Ostrelin"_s, QString(), u"[Service]"_s,
                     u"Type=oneshot"_s, u"ExecCondition=:/usr/bin/test -x \"/opt/ostrelin\""_s,
                     u"ExecStart=:/usr/bin/nice -n 10 \"/opt/ostrelin\" \"--run-schedule\" \""_s + id + u'"',
                     u"CPUWeight=20"_s, u"IOWeight=20"_s, QString()}));
    EXPECT_EQ(complaints(), QByteArray());
}

TEST_F(UserTimersTest, theCallsNameTheTimer) {
    timers.bootOut(label);
    timers.bootstrap(jobOf({{.hour = 9, .minute = 5}}, u"/opt/ostrelin"_s));
    EXPECT_EQ(systemctl.calls(),
              (QList<QStringList>{{u"--user"_s, u"disable"_s, u"--now"_s, label + u".timer"_s},
                                  {u"--user"_s, u"daemon-reload"_s},
                                  {u"--user"_s, u"enable"_s, u"--now"_s, label + u".timer"_s}}));
}

TEST_F(UserTimersTest, aBootOutLeavesTheUnits) {
    timers.bootstrap(jobOf({{.hour = 9, .minute = 5}}, u"/opt/ostrelin"_s));
    timers.bootOut(label);
    EXPECT_EQ(QDir(units()).entryList(QDir::Files, QDir::Name),
              (QStringList{label + u".service"_s, label + u".timer"_s}));
}

TEST_F(UserTimersTest, theTimerElapsesAtItsTimes) {
    timers.bootstrap(jobOf({{.hour = 9, .minute = 5}}, u"/opt/ostrelin"_s));
    EXPECT_EQ(nextElapse(u"2026-11-15 09:04"_s), u"2026-11-15 09:05:00"_s);
    EXPECT_EQ(nextElapse(u"2026-11-15 09:05"_s), u"2026-11-16 09:05:00"_s);
    timers.bootstrap(jobOf({{23, 59, 2}, {23, 59, 4}}, u"/opt/ostrelin"_s));
    EXPECT_EQ(complaints(), QByteArray());
    EXPECT_EQ(nextElapse(u"2026-11-15 12:00"_s), u"2026-11-17 23:59:00"_s) << "2 is Tuesday";
    EXPECT_EQ(nextElapse(u"2026-11-18 12:00"_s), u"2026-11-19 23:59:00"_s) << "4 is Thursday";
}

TEST_F(UserTimersTest, oneIsMondayAndSevenSundayAsIsZero) {
    for (qint64 weekday = 0; weekday <= 7; ++weekday) {
        timers.bootstrap(jobOf({{.hour = 0, .minute = 0, .weekday = weekday}}, u"/opt/ostrelin"_s));
        const int day = weekday == 0 ? 22 : 15 + static_cast<int>(weekday);
        EXPECT_EQ(nextElapse(u"2026-11-15 12:00"_s), u"2026-11-%1 00:00:00"_s.arg(day)) << weekday;
    }
}

TEST_F(UserTimersTest, aNumberThatIsNoWeekdayIsLeftOut) {
    timers.bootstrap(jobOf({{9, 0, 8}, {9, 0, -1}, {9, 0, 1LL << 40}, {9, 0, 3}}, u"/opt/ostrelin"_s));
    EXPECT_EQ(linesOf(u"timer"_s).filter(u"OnCalendar"_s), QStringList{u"OnCalendar=Wed *-*-* 09:00:00"_s});
}

TEST_F(UserTimersTest, unitsOfAnyPathAreRight) {
    for (const QString &name : oddNames) {
        const EnvironmentVariable data("XDG_DATA_HOME", u"/data/"_s.append(name).toUtf8());
        timers.bootstrap(jobOf({{.hour = 9, .minute = 5}}, u"/opt/"_s + name + u"/ostrelin"_s));
        EXPECT_EQ(complaints(), QByteArray()) << name.toStdString();
    }
}

TEST_F(UserTimersTest, aFolderThatCannotBeWrittenIsSilent) {
    QFile inTheWay(configuration.filePath(u"systemd"_s));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    timers.bootstrap(jobOf({{.hour = 9, .minute = 5}}, u"/opt/ostrelin"_s));
    EXPECT_EQ(systemctl.calls().size(), 2);
}

TEST_F(UserTimersTest, thoseOfTheSystemLieInTheFolderForConfiguration) {
    const EnvironmentVariable home("XDG_CONFIG_HOME", configuration.filePath(u"own"_s).toLocal8Bit());
    const EnvironmentVariable commands("PATH", QFileInfo(systemctl.path()).absolutePath().toLocal8Bit() +
                                                   ':' + qgetenv("PATH"));
    UserJobs::ofSystem()->bootstrap(jobOf({{.hour = 9, .minute = 5}}, u"/opt/ostrelin"_s));
    EXPECT_TRUE(QFile::exists(configuration.filePath(u"own/systemd/user/"_s + label + u".timer"_s)));
    EXPECT_EQ(systemctl.calls().size(), 2);
}

namespace {

/// The same with a real service manager, which gets every call that was made.
class UserManagerTest : public UserTimersTest {
protected:
    /// Makes all calls so far, then these, and gives what they print.
    QByteArray said(const QStringList &further) const {
        QFile lines(configuration.filePath(u"lines"_s));
        EXPECT_TRUE(lines.open(QIODevice::WriteOnly));
        for (const QStringList &call : systemctl.calls())
            lines.write(call.join(u' ').toUtf8() + '\n');
        for (const QString &line : further)
            lines.write("--user " + line.toUtf8() + '\n');
        lines.close();
        QStringList command{u"--mount"_s};
        if (::geteuid() != 0)
            command << u"--user"_s << u"--map-root-user"_s;
        QProcess manager;
        manager.start(u"unshare"_s, command << QStringLiteral(WITH_USER_MANAGER) << configuration.path()
                                            << lines.fileName());
        EXPECT_TRUE(manager.waitForFinished());
        return manager.readAll();
    }

    /// An executable that notes its arguments, one a line, and where the data lies.
    QString noteTaker(const QString &name) const {
        QDir(configuration.path()).mkpath(name);
        QFile file(configuration.filePath(name + u"/ostrelin"_s));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\nprintf '%s\\n' \"$@\" \"$XDG_DATA_HOME\" \"$(nice)\" >\"$0.note\"\n");
        file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        return file.fileName();
    }
};

constexpr auto noManager =
    "A REAL SERVICE MANAGER WASN'T ASKED: this system lets nobody have one of their own";

} // namespace

TEST_F(UserManagerTest, theTimerIsThereUntilItIsBootedOut) {
    timers.bootOut(label);
    timers.bootstrap(jobOf({{9, 5, 1}, {9, 5, 4}}, u"/opt/ostrelin"_s));
    const QString list = u"list-timers --all --no-legend"_s;
    const QString disable = u"disable --now "_s + label + u".timer"_s;
    const QByteArray text = said({list, u"is-enabled "_s + label + u".timer"_s, disable, list});
    if (!text.startsWith("ready"))
        GTEST_SKIP() << noManager;
    static const QRegularExpression once(u"(Mon|Thu) [-0-9]+ 09:05:00 UTC .*"_s + label + u".timer"_s);
    EXPECT_EQ(QString::fromUtf8(text).count(once), 1) << text.toStdString();
    EXPECT_TRUE(text.contains("\nenabled\n")) << text.toStdString();
}

TEST_F(UserManagerTest, whatItStartsGetsItsArgumentsAndTheDataFolder) {
    const auto labelOf = [](qsizetype index) { return label + u'-' + QString::number(index); };
    QStringList starts;
    for (qsizetype index = 0; index < oddNames.size(); ++index) {
        const EnvironmentVariable variable("XDG_DATA_HOME", u"/data/"_s.append(oddNames[index]).toUtf8());
        UserJob job = jobOf({{.hour = 9, .minute = 5}}, noteTaker(oddNames[index]));
        job.label = labelOf(index);
        timers.bootstrap(job);
        starts += u"start "_s + job.label + u".service"_s;
    }
    if (!said(starts).startsWith("ready"))
        GTEST_SKIP() << noManager;
    // The manager is as nice as this test is, and nobody is nicer than 19.
    const int niceness = std::min(::getpriority(PRIO_PROCESS, 0) + 10, 19);
    for (const QString &name : oddNames) {
        QFile note(configuration.filePath(name + u"/ostrelin.note"_s));
        EXPECT_TRUE(note.open(QIODevice::ReadOnly)) << name.toStdString();
        EXPECT_EQ(QString::fromUtf8(note.readAll()),
                  u"--run-schedule\n"_s + id + u"\n/data/"_s + name + u"\n%1\n"_s.arg(niceness));
    }
}

TEST_F(UserManagerTest, nothingIsStartedAndNothingFailsOnceTheProgramIsGone) {
    QStringList lines;
    for (qsizetype index = 0; index < oddNames.size(); ++index) {
        UserJob job = jobOf({{.hour = 9, .minute = 5}}, u"/opt/"_s + oddNames[index] + u"/ostrelin"_s);
        job.label = label + u'-' + QString::number(index);
        timers.bootstrap(job);
        lines << u"start "_s + job.label + u".service"_s
              << u"show --property=ActiveState "_s + job.label + u".service"_s;
    }
    const QByteArray text = said(lines);
    if (!text.startsWith("ready"))
        GTEST_SKIP() << noManager;
    EXPECT_EQ(text.count("ActiveState=inactive"), oddNames.size()) << text.toStdString();
}
