#include "layering/SourceTree.h"

#include <QHash>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// What a room may not touch although it stands below: services that know nothing of each other.
const QHash<QString, QStringList> strangers{
    {u"schedules"_s, {u"pages/paper"_s, u"pages/drawing"_s, u"pages"_s, u"web"_s}},
    {u"conversation"_s, {u"engine"_s}},
    {u"pages"_s, {u"engine"_s, u"web"_s, u"client"_s}},
    {u"engine"_s, {u"web"_s, u"client"_s}},
    {u"web"_s, {u"client"_s}},
};

/// The Qt modules of widgets and windows, which only these rooms may use.
const QStringList roomsWithAScreen{u"screens"_s, u"pages/paper"_s, u"pages/drawing"_s};
const QRegularExpression screenHeader(
    u"^Q(Widget|Application|MainWindow|Label|Layout|VBoxLayout|HBoxLayout|Painter|PushButton|AbstractButton|Svg\\w*|Style\\w*|TextLayout|Palette|Icon|Pixmap|Clipboard|GuiApplication)$"_s);

} // namespace

TEST(Layering, theSourceIsThere) {
    EXPECT_GT(allIncludes(ownInclude).size(), 50);
}

TEST(Layering, aRoomIncludesOnlyFromItselfAndFromBelow) {
    for (const Include &include : allIncludes(ownInclude)) {
        const QString other = roomOf(include.header);
        if (include.file == u"main.cpp"_s || include.header.endsWith(u".moc"_s))
            continue;
        ASSERT_FALSE(include.room.isEmpty()) << include.file.toStdString() << " stands in no room";
        ASSERT_FALSE(other.isEmpty())
            << include.file.toStdString() << " includes " << include.header.toStdString();
        EXPECT_GE(rooms.indexOf(other), rooms.indexOf(include.room))
            << include.file.toStdString() << " includes " << include.header.toStdString();
        EXPECT_FALSE(strangers.value(include.room).contains(other))
            << include.file.toStdString() << " includes " << include.header.toStdString();
    }
}

TEST(Layering, onlyTheRoomsOfTheScreenKnowAScreen) {
    for (const Include &include : allIncludes(systemInclude)) {
        if (include.file == u"main.cpp"_s || roomsWithAScreen.contains(include.room))
            continue;
        EXPECT_FALSE(screenHeader.match(include.header).hasMatch())
            << include.file.toStdString() << " includes " << include.header.toStdString();
    }
}

TEST(Layering, onlyThePlatformKnowsTheSystem) {
    const QRegularExpression systemHeader(
        u"^(sys|linux|netinet|arpa)/|^(unistd|fcntl|poll|dlfcn|spawn)\\.h$|^QDBus"_s);
    for (const Include &include : allIncludes(systemInclude)) {
        if (include.room == u"platform"_s)
            continue;
        EXPECT_FALSE(systemHeader.match(include.header).hasMatch())
            << include.file.toStdString() << " includes " << include.header.toStdString();
    }
    const QRegularExpression systemTest(
        u"^#\\s*(?:if|ifdef|ifndef|elif).*\\b(Q_OS_\\w+|__linux__|__APPLE__|_WIN32)"_s,
        QRegularExpression::MultilineOption);
    for (const Include &found : allIncludes(systemTest))
        ADD_FAILURE() << found.file.toStdString() << " tests for " << found.header.toStdString();
}
