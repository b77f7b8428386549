/// The diagram of docs/architecture.md and the build say of the rooms what their includes say.

#include "layering/SourceTree.h"

#include <QHash>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// The lines of the one diagram.
QStringList diagram() {
    const QRegularExpression block(u"^```mermaid\\n(.*?)^```"_s,
                                   QRegularExpression::MultilineOption |
                                       QRegularExpression::DotMatchesEverythingOption);
    return block.match(textOf(u"docs/architecture.md"_s)).captured(1).split(u'\n');
}

/// The rooms of the diagram by the names that stand for them: `drawing["<b>pages/drawing</b> …"]`.
QHash<QString, QString> drawnRooms() {
    const QRegularExpression node(u"^\\s*(\\w+)\\[\"<b>([^<]+)</b>"_s);
    QHash<QString, QString> drawn;
    for (const QString &line : diagram()) {
        if (const auto match = node.match(line); match.hasMatch())
            drawn.insert(match.captured(1), match.captured(2));
    }
    return drawn;
}

/// Its arrows: `core --> schedules & conversation`.
QSet<Edge> drawnEdges() {
    const QHash<QString, QString> drawn = drawnRooms();
    const QRegularExpression arrows(u"^\\s*(\\w+) --> (.+)$"_s);
    QSet<Edge> edges;
    for (const QString &line : diagram()) {
        const auto match = arrows.match(line);
        for (const QString &other : match.captured(2).split(u" & "_s, Qt::SkipEmptyParts))
            edges.insert({drawn.value(match.captured(1)), drawn.value(other)});
    }
    return edges;
}

/// What the rooms name after USES in their build files, where a room goes by the last part of its path.
QSet<Edge> builtEdges() {
    const QRegularExpression use(u"\\bUSES\\b(.*?)\\b(?:LINKS|LINUX|SOURCES)\\b"_s,
                                 QRegularExpression::DotMatchesEverythingOption);
    QHash<QString, QString> pathOf;
    for (const QString &room : rooms)
        pathOf.insert(room.section(u'/', -1), room);
    QSet<Edge> edges;
    for (const QString &room : rooms) {
        const QString list = use.match(textOf(u"src/%1/CMakeLists.txt"_s.arg(room))).captured(1);
        for (const QString &other : list.simplified().split(u' ', Qt::SkipEmptyParts))
            edges.insert({room, pathOf.value(other)});
    }
    return edges;
}

void expectEdgesOfTheSource(const QSet<Edge> &told) {
    const QSet<Edge> real = edgesOfTheSource();
    ASSERT_GT(real.size(), 20);
    for (const Edge &edge : real - told)
        ADD_FAILURE() << "missing: " << edge.from.toStdString() << " includes from " << edge.to.toStdString();
    for (const Edge &edge : told - real)
        ADD_FAILURE() << "superfluous: " << edge.from.toStdString() << " includes nothing from "
                      << edge.to.toStdString();
}

} // namespace

TEST(Diagram, itShowsEachRoomOnce) {
    QStringList drawn = drawnRooms().values();
    EXPECT_EQ(QSet<QString>(drawn.begin(), drawn.end()), QSet<QString>(rooms.begin(), rooms.end()));
    EXPECT_EQ(drawn.size(), rooms.size());
}

TEST(Diagram, itsArrowsAreTheIncludes) {
    expectEdgesOfTheSource(drawnEdges());
}

TEST(Diagram, theBuildUsesWhatIsIncluded) {
    expectEdgesOfTheSource(builtEdges());
}
