#include "platform/LaunchAgents.h"

#include <QDir>
#include <QFile>

#include <algorithm>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// A property list (plist(5)), byte by byte as that system's own tools write it: the label, the elements of
/// the arguments and those of the intervals have their places in it.
constexpr auto listForm = R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
	<key>Label</key>
	<string>%1</string>
	<key>ProcessType</key>
	<string>Background</string>
	<key>ProgramArguments</key>
	<array>
%2	</array>
	<key>RunAtLoad</key>
	<false/>
	<key>StartCalendarInterval</key>
	<array>
%3	</array>
</dict>
</plist>
)"_L1;

/// Where the jobs of a person at the screen belong (launchctl(1), "gui/<uid>").
QString domain() {
    return u"gui/"_s + QString::number(::getuid());
}

/// Whether a text can be part of XML, and comes back from there as it was (XML 1.0, "Characters" and
/// "End-of-Line Handling").
bool isXml(const QString &text) {
    return text.isValidUtf16() && std::none_of(text.begin(), text.end(), [](QChar character) {
               const char16_t unit = character.unicode();
               return (unit < 0x20 && unit != u'\t' && unit != u'\n') || unit >= 0xFFFE;
           });
}

QString escaped(QString text) {
    return text.replace(u'&', u"&amp;"_s).replace(u'<', u"&lt;"_s).replace(u'>', u"&gt;"_s);
}

QString argumentElement(const QString &argument) {
    return u"\t\t<string>"_s + escaped(argument) + u"</string>\n"_s;
}

QString intervalElement(const CalendarInterval &interval) {
    const auto entry = [](const QString &key, qint64 value) {
        return u"\t\t\t<key>%1</key>\n\t\t\t<integer>%2</integer>\n"_s.arg(key).arg(value);
    };
    QString element =
        u"\t\t<dict>\n"_s + entry(u"Hour"_s, interval.hour) + entry(u"Minute"_s, interval.minute);
    if (interval.weekday)
        element += entry(u"Weekday"_s, *interval.weekday);
    return element + u"\t\t</dict>\n"_s;
}

QByteArray propertyList(const UserJob &job) {
    QString arguments;
    for (const QString &argument : job.command)
        arguments += argumentElement(argument);
    QString intervals;
    for (const CalendarInterval &interval : job.intervals)
        intervals += intervalElement(interval);
    return QString(listForm).arg(escaped(job.label), arguments, intervals).toUtf8();
}

} // namespace

LaunchAgents::LaunchAgents(const QString &homeFolder, const QString &launchctl)
    : m_folder(homeFolder + u"/Library/LaunchAgents"_s),
      m_launchctl(launchctl) {}

void LaunchAgents::bootOut(const QString &label) {
    m_launchctl.run({u"bootout"_s, domain() + u'/' + label});
}

void LaunchAgents::bootstrap(const UserJob &job) {
    if (!isXml(job.label) || !std::all_of(job.command.begin(), job.command.end(), isXml))
        return;
    const QString path = m_folder + u'/' + job.label + u".plist"_s;
    QDir().mkpath(m_folder);
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(propertyList(job));
    file.close();
    m_launchctl.run({u"bootstrap"_s, domain(), path});
}
