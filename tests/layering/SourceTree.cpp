#include "layering/SourceTree.h"

#include <QDirIterator>
#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

const QStringList rooms{u"screens"_s,     u"core"_s,          u"schedules"_s, u"conversation"_s,
                        u"pages/paper"_s, u"pages/drawing"_s, u"pages"_s,     u"engine"_s,
                        u"web"_s,         u"client"_s,        u"records"_s,   u"platform"_s};

const QRegularExpression ownInclude(u"^#include \"([^\"]+)\""_s, QRegularExpression::MultilineOption);
const QRegularExpression systemInclude(u"^#include <([^>]+)>"_s, QRegularExpression::MultilineOption);

QString roomOf(const QString &path) {
    for (const QString &room : rooms) {
        if (path.startsWith(room + u'/'))
            return room;
    }
    return {};
}

QString textOf(const QString &path) {
    QFile file(QStringLiteral(PROJECT_FOLDER "/") + path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << "no " << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

QStringList filesBelow(const QString &folder, const QStringList &names) {
    const QDir top(QStringLiteral(PROJECT_FOLDER));
    QDirIterator files(top.filePath(folder), names, QDir::Files, QDirIterator::Subdirectories);
    QStringList paths;
    while (files.hasNext())
        paths.append(top.relativeFilePath(files.next()));
    return paths;
}

QList<Include> allIncludes(const QRegularExpression &directive) {
    QList<Include> includes;
    for (const QString &path : filesBelow(u"src"_s, {u"*.h"_s, u"*.cpp"_s})) {
        const QString name = path.mid(QStringLiteral("src/").size());
        auto matches = directive.globalMatch(textOf(path));
        while (matches.hasNext())
            includes.append({name, roomOf(name), matches.next().captured(1)});
    }
    return includes;
}

QSet<Edge> edgesOfTheSource() {
    QSet<Edge> edges;
    for (const Include &include : allIncludes(ownInclude)) {
        const QString other = roomOf(include.header);
        if (!include.room.isEmpty() && !other.isEmpty() && other != include.room)
            edges.insert({include.room, other});
    }
    return edges;
}
