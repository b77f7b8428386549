#include "platform/LaunchAgents.h"

#include "support/RecordingCommand.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <gtest/gtest.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QString label = u"com.quennarbel.ostrelin.schedule.6D3A1C52-7C3B-4C0E-9B55-0D2F7E9F3B11"_s;

UserJob jobOf(const QList<CalendarInterval> &intervals, const QString &executable = u"/opt/ostrelin"_s) {
    return {label, {executable, u"--run-schedule"_s, u"6D3A1C52-7C3B-4C0E-9B55-0D2F7E9F3B11"_s}, intervals};
}

class LaunchAgentsTest : public ::testing::Test {
protected:
    QString path() const { return home.filePath(u"Library/LaunchAgents/"_s + label + u".plist"_s); }

    QByteArray written() const {
        QFile file(path());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    /// The file as somebody else's reader of property lists has it, once that writes the same bytes for it.
    QJsonObject readBack() const {
        QProcess python;
        python.start(u"python3"_s, {u"-c"_s,
                                    u"import json, plistlib, sys\n"
                                    "text = open(sys.argv[1], 'rb').read()\n"
                                    "value = plistlib.loads(text)\n"
                                    "assert plistlib.dumps(value) == text, plistlib.dumps(value)\n"
                                    "json.dump(value, sys.stdout)"_s,
                                    path()});
        EXPECT_TRUE(python.waitForFinished());
        EXPECT_EQ(python.exitCode(), 0) << python.readAllStandardError().toStdString();
        return QJsonDocument::fromJson(python.readAllStandardOutput()).object();
    }

    const QString domain = u"gui/"_s + QString::number(::getuid());
    QTemporaryDir home;
    RecordingCommand launchctl{u"launchctl"_s};
    LaunchAgents agents{home.path(), launchctl.path()};
};

} // namespace

TEST_F(LaunchAgentsTest, theListSaysWhatIsStartedAndWhen) {
    agents.bootstrap(jobOf({{.hour = 9, .minute = 5}}));
    const QJsonObject expected{
        {u"Label"_s, label},
        {u"ProgramArguments"_s,
         QJsonArray{u"/opt/ostrelin"_s, u"--run-schedule"_s, u"6D3A1C52-7C3B-4C0E-9B55-0D2F7E9F3B11"_s}},
        {u"StartCalendarInterval"_s, QJsonArray{QJsonObject{{u"Hour"_s, 9}, {u"Minute"_s, 5}}}},
        {u"RunAtLoad"_s, false},
        {u"ProcessType"_s, u"Background"_s},
    };
    EXPECT_EQ(readBack(), expected);
}

TEST_F(LaunchAgentsTest, eachIntervalIsADictionary) {
    agents.bootstrap(jobOf({{23, 59, 2}, {23, 59, 4}}));
    const auto interval = [](int weekday) {
        return QJsonObject{{u"Hour"_s, 23}, {u"Minute"_s, 59}, {u"Weekday"_s, weekday}};
    };
    EXPECT_EQ(readBack()[u"StartCalendarInterval"_s], (QJsonArray{interval(2), interval(4)}));
}

TEST_F(LaunchAgentsTest, anyPathIsToldAsItIs) {
    for (const QString &executable :
         {u"/Applications/A & B <c>/ostrelin"_s, u"/opt/a \"b\" 'c'/100%/$HOME/d\\e"_s, u"/opt/Grüße/日本"_s,
          u"/opt/]]>/&amp;"_s}) {
        agents.bootstrap(jobOf({{}}, executable));
        EXPECT_EQ(readBack()[u"ProgramArguments"_s].toArray().first(), executable);
    }
}

TEST_F(LaunchAgentsTest, aPathThatNoListCanHoldIsNotWritten) {
    agents.bootstrap(jobOf({{}}, u"/opt/\x01/ostrelin"_s));
    EXPECT_FALSE(QFile::exists(path()));
    EXPECT_TRUE(launchctl.calls().isEmpty());
}

TEST_F(LaunchAgentsTest, theCallsNameTheJobInThePersonsDomain) {
    agents.bootOut(label);
    agents.bootstrap(jobOf({{.hour = 9, .minute = 5}}));
    EXPECT_EQ(launchctl.calls(),
              (QList<QStringList>{{u"bootout"_s, domain + u'/' + label}, {u"bootstrap"_s, domain, path()}}));
}

TEST_F(LaunchAgentsTest, aBootOutLeavesTheList) {
    agents.bootstrap(jobOf({{.hour = 9, .minute = 5}}));
    const QByteArray before = written();
    agents.bootOut(label);
    EXPECT_EQ(written(), before);
    agents.bootstrap(jobOf({{.hour = 10, .minute = 5}}));
    EXPECT_NE(written(), before) << "the next one replaces it";
}

TEST_F(LaunchAgentsTest, aFolderThatCannotBeWrittenIsSilent) {
    QFile inTheWay(home.filePath(u"Library"_s));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    agents.bootstrap(jobOf({{.hour = 9, .minute = 5}}));
    EXPECT_EQ(launchctl.calls().size(), 1);
}
