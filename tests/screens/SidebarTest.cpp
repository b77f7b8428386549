#include "records/ChatStore.h"
#include "screens/AppFixture.h"
#include "screens/ChatList.h"
#include "screens/CheckToggle.h"
#include "screens/Label.h"
#include "screens/RangeMenu.h"
#include "screens/SidebarView.h"
#include "screens/Style.h"

#include <QMenu>
#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

class SidebarTest : public AppFixture {
protected:
    SidebarTest() : sidebar((start(), app), look, clock) {
        sidebar.resize(style::sidebarWidth, 600);
        present(sidebar);
    }

    /// Puts a chat on the disk and into the list.
    QUuid addChat(const QString &title, const QDateTime &updatedAt) {
        Conversation chat = newConversation(updatedAt.toUTC(), title);
        ChatStore().save(chat);
        app.chat().reloadSummaries();
        return chat.id;
    }
    QUuid addChat(const QString &title) { return addChat(title, clock.now()); }

    QStringList listed() const {
        QStringList titles;
        for (int row = 0; row < list()->model()->rowCount(); ++row)
            titles.append(list()->model()->index(row, 0).data().toString());
        return titles;
    }

    static bool isOnDisk(const QUuid &id) { return ChatStore().load(id).has_value(); }
    QUuid openID() { return app.chat().conversation()->id; }
    bool isMarked(const QUuid &id) const {
        QCoreApplication::processEvents();
        return !list()->marker().isEmpty() && list()->marker() == QRectF(list()->frameOf(id));
    }

    void setSearchMode(SearchMode mode) {
        Settings settings = app.settings();
        settings.searchMode = mode;
        app.saveSettings(settings);
    }

    /// The texts in sight beside the titles.
    bool reads(const QString &text) const {
        const auto labels = sidebar.findChildren<Label *>();
        return std::any_of(labels.begin(), labels.end(),
                           [&](const Label *label) { return label->isVisible() && label->text() == text; });
    }

    ChatList *list() const { return sidebar.findChild<ChatList *>(); }
    CheckToggle *offline() const { return sidebar.findChild<CheckToggle *>(); }
    RangeMenu *rangeMenu() const { return sidebar.findChild<RangeMenu *>(); }
    QMenu *menu() const { return rangeMenu()->findChild<QMenu *>(); }
    QList<QAction *> ranges() const { return menu()->actions(); }

    StillLook look;
    SidebarView sidebar;
};

} // namespace

TEST_F(SidebarTest, newChatBeginsOneAndMarksIt) {
    QSignalSpy opened(&sidebar, &SidebarView::chatOpened);
    const QUuid before = openID();
    click(buttonNamed(sidebar, u"New Chat"_s));
    EXPECT_NE(openID(), before);
    EXPECT_TRUE(isMarked(openID()));
    EXPECT_EQ(listed(), (QStringList{u"New chat"_s, u"New chat"_s}));
    EXPECT_EQ(opened.count(), 1);
}

TEST_F(SidebarTest, theMarkerGlidesToAChatThatIsNew) {
    const QDateTime past = clock.now().addDays(-1);
    const QList<QUuid> older{addChat(u"One"_s, past), addChat(u"Two"_s, past), addChat(u"Three"_s, past)};
    const auto markerGlides = [this] {
        const double start = list()->marker().top();
        EXPECT_GT(start, list()->frameOf(openID()).top()) << "it only sets out";
        return eventually([this] { return isMarked(openID()); });
    };
    app.chat().openConversation(older.last());
    EXPECT_TRUE(isMarked(older.last()));
    look.setMotion(Motion::full);
    clock.advance(1s);
    click(buttonNamed(sidebar, u"New Chat"_s));
    EXPECT_TRUE(markerGlides());
    app.chat().openConversation(older.first());
    EXPECT_TRUE(eventually([&] { return isMarked(older.first()); }));
    clock.advance(1s);
    app.chat().deleteConversation(older.first());
    EXPECT_TRUE(markerGlides());
}

TEST_F(SidebarTest, theGearAsksForTheSettings) {
    QSignalSpy asked(&sidebar, &SidebarView::settingsRequested);
    QPushButton *gear = buttonNamed(sidebar, u"Settings"_s);
    EXPECT_EQ(gear->toolTip(), u"Settings"_s);
    click(gear);
    EXPECT_EQ(asked.count(), 1);
}

TEST_F(SidebarTest, aClickOpensAChat) {
    const QUuid id = addChat(u"Morning"_s);
    QSignalSpy opened(&sidebar, &SidebarView::chatOpened);
    QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, list()->frameOf(id).center());
    EXPECT_EQ(openID(), id);
    EXPECT_TRUE(isMarked(id));
    EXPECT_EQ(opened.count(), 1);
}

TEST_F(SidebarTest, aChatWhoseFileIsGoneLeavesThePresentOne) {
    const QUuid id = addChat(u"Morning"_s);
    QFile::remove(chatsFolder() + u'/' + id.toString(QUuid::WithoutBraces).toUpper() + u".json"_s);
    ASSERT_FALSE(isOnDisk(id));
    const QUuid before = openID();
    Q_EMIT list()->chosen(id);
    EXPECT_EQ(openID(), before);
    EXPECT_TRUE(isMarked(before));
}

TEST_F(SidebarTest, theRangeIsChosenFromAMenu) {
    QStringList labels;
    for (const QAction *range : ranges())
        labels.append(range->text());
    EXPECT_EQ(labels, (QStringList{u"Today"_s, u"Last 7 days"_s, u"Last 30 days"_s, u"All time"_s}));
    EXPECT_EQ(rangeMenu()->toolTip(), u"Show chats from"_s);
    EXPECT_EQ(spokenRole(rangeMenu()), QAccessible::ButtonMenu);
    for (QAction *range : ranges()) {
        range->trigger();
        EXPECT_EQ(rangeMenu()->text(), range->text());
        EXPECT_EQ(spokenName(rangeMenu()), range->text());
        for (const QAction *other : ranges())
            EXPECT_EQ(other->isChecked(), other == range);
    }
}

TEST_F(SidebarTest, theMenuOpensByMouseAndByKeys) {
    QTest::mouseClick(rangeMenu(), Qt::LeftButton);
    EXPECT_TRUE(menu()->isVisible());
    menu()->close();
    for (const auto key : {Qt::Key_Return, Qt::Key_Space}) {
        rangeMenu()->setFocus(Qt::TabFocusReason);
        QTest::keyClick(rangeMenu(), key);
        EXPECT_TRUE(menu()->isVisible());
        menu()->close();
    }
}

TEST_F(SidebarTest, aRangeListsItsChats) {
    const QDateTime today = clock.now().toLocalTime().date().startOfDay();
    addChat(u"Old"_s, today.addDays(-100));
    addChat(u"Six days ago"_s, today.addDays(-6));
    addChat(u"Yesterday"_s, today.addSecs(-60));
    sidebar.setRange(SessionRange::today);
    EXPECT_EQ(listed(), QStringList(u"New chat"_s));
    sidebar.setRange(SessionRange::week);
    EXPECT_EQ(listed(), (QStringList{u"New chat"_s, u"Yesterday"_s, u"Six days ago"_s}));
    sidebar.setRange(SessionRange::all);
    EXPECT_EQ(listed().size(), 4);
}

TEST_F(SidebarTest, anEmptyRangeSaysSo) {
    const QUuid old = addChat(u"Old"_s, clock.now().addDays(-100));
    app.chat().openConversation(old);
    const QList<ConversationSummary> all = app.chat().summaries();
    for (const ConversationSummary &summary : all) {
        if (summary.id != old)
            app.chat().deleteConversation(summary.id);
    }
    EXPECT_TRUE(isMarked(old));
    for (const SessionRange range : {SessionRange::today, SessionRange::week, SessionRange::month}) {
        sidebar.setRange(range);
        EXPECT_TRUE(reads(emptyTextOf(range)));
        EXPECT_FALSE(list()->isVisible());
        EXPECT_TRUE(list()->marker().isEmpty());
    }
    sidebar.setRange(SessionRange::all);
    EXPECT_TRUE(list()->isVisible());
    EXPECT_FALSE(reads(emptyTextOf(SessionRange::month)));
    app.chat().resetAll();
    EXPECT_TRUE(reads(u"No chats yet."_s));
}

TEST_F(SidebarTest, aDayThatEndsTakesItsChatsAlong) {
    sidebar.setRange(SessionRange::today);
    EXPECT_EQ(listed(), QStringList(u"New chat"_s));
    const QDateTime now = clock.now().toLocalTime();
    const qint64 left = now.msecsTo(now.date().addDays(1).startOfDay());
    for (qint64 minute = 0; minute < left / 60'000; ++minute) {
        clock.advance(1min);
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(listed(), QStringList(u"New chat"_s)) << "a minute before midnight";
    clock.advance(1min);
    EXPECT_TRUE(eventually([this] { return listed().isEmpty(); }));
    EXPECT_TRUE(reads(u"No chats today."_s));
}

TEST_F(SidebarTest, f2AsksForAnotherTitle) {
    const QUuid id = addChat(u"Morning"_s);
    QSignalSpy asked(&sidebar, &SidebarView::renameRequested);
    list()->setFocus(Qt::TabFocusReason);
    list()->setCurrentIndex(list()->indexAt(list()->frameOf(id).center()));
    QTest::keyClick(list(), Qt::Key_F2);
    ASSERT_EQ(asked.count(), 1);
    EXPECT_EQ(asked.last().first().value<ConversationSummary>().title, u"Morning"_s);
}

TEST_F(SidebarTest, deleteActsAtOnce) {
    const QUuid id = addChat(u"Morning"_s);
    const QUuid open = openID();
    Q_EMIT list()->deleteRequested(id);
    EXPECT_FALSE(isOnDisk(id));
    EXPECT_EQ(listed(), QStringList(u"New chat"_s));
    EXPECT_TRUE(isMarked(open));
}

TEST_F(SidebarTest, whereTheOpenChatIsDeletedTheMarkerIsAtTheNewOne) {
    const QUuid id = addChat(u"Morning"_s);
    app.chat().openConversation(id);
    EXPECT_TRUE(isMarked(id));
    Q_EMIT list()->deleteRequested(id);
    EXPECT_FALSE(isOnDisk(id));
    EXPECT_NE(openID(), id);
    EXPECT_TRUE(isMarked(openID()));
}

TEST_F(SidebarTest, theSwitchCutsOffFromTheWebAndOpensItAgain) {
    setSearchMode(SearchMode::ask);
    EXPECT_FALSE(offline()->isChecked());
    click(offline());
    EXPECT_TRUE(offline()->isChecked());
    EXPECT_EQ(loadSettings().searchMode, SearchMode::off);
    click(offline());
    EXPECT_FALSE(offline()->isChecked());
    EXPECT_EQ(loadSettings().searchMode, SearchMode::always) << "not what it was before";
}

TEST_F(SidebarTest, aClickOnItsNameTurnsTheSwitch) {
    const bool before = offline()->isChecked();
    const auto labels = sidebar.findChildren<Label *>();
    Label *name = *std::find_if(labels.begin(), labels.end(),
                                [](const Label *label) { return label->text() == u"Offline Mode"_s; });
    click(name);
    EXPECT_NE(offline()->isChecked(), before);
    QTest::mouseClick(name, Qt::RightButton);
    QTest::mousePress(name, Qt::LeftButton);
    QTest::mouseRelease(name, Qt::LeftButton, {}, QPoint(5, -200));
    EXPECT_NE(offline()->isChecked(), before);
}

TEST_F(SidebarTest, theSwitchFollowsTheSettings) {
    setSearchMode(SearchMode::off);
    EXPECT_TRUE(offline()->isChecked());
    setSearchMode(SearchMode::always);
    EXPECT_FALSE(offline()->isChecked());
    EXPECT_EQ(spokenName(offline()), u"Offline Mode"_s);
    EXPECT_TRUE(reads(u"Offline Mode"_s));
}

TEST_F(SidebarTest, aChangeOfTheSwitchLeavesTheOtherSettings) {
    Settings settings = app.settings();
    settings.theme = Theme::pink;
    app.saveSettings(settings);
    click(offline());
    EXPECT_EQ(loadSettings().theme, Theme::pink);
}

TEST_F(SidebarTest, withoutToolsThereIsOnlyARemark) {
    setSearchMode(SearchMode::ask);
    SidebarModel model;
    model.offersSearch = false;
    sidebar.setModel(model);
    EXPECT_TRUE(reads(u"Web search needs a larger model."_s));
    EXPECT_FALSE(offline()->isVisible());
    EXPECT_FALSE(reads(u"Offline Mode"_s));
    EXPECT_EQ(loadSettings().searchMode, SearchMode::ask);
    model.offersSearch = true;
    sidebar.setModel(model);
    EXPECT_TRUE(offline()->isVisible());
    EXPECT_FALSE(reads(u"Web search needs a larger model."_s));
}

TEST_F(SidebarTest, itFollowsEverythingThatIsPublished) {
    const auto changes = {std::function<void()>([this] { Q_EMIT app.activeTierChanged(); }),
                          std::function<void()>([this] { Q_EMIT app.settingsChanged(); }),
                          std::function<void()>([this] { Q_EMIT app.chat().summariesChanged(); }),
                          std::function<void()>([this] { Q_EMIT app.chat().isGeneratingChanged(); })};
    for (const auto &tellChange : changes) {
        sidebar.setModel({});
        EXPECT_FALSE(offline()->isVisible());
        tellChange();
        EXPECT_TRUE(offline()->isVisible());
        EXPECT_EQ(listed(), QStringList(u"New chat"_s));
    }
}

TEST_F(SidebarTest, aChatThatAnswersSaysSo) {
    const auto description = [this] {
        return list()->model()->index(0, 0).data(Qt::AccessibleDescriptionRole).toString();
    };
    engine.answer(Script().content(u"Hel"_s).hold());
    app.chat().send(u"Hello!"_s);
    EXPECT_TRUE(description().startsWith(u"Answering, "_s)) << description().toStdString();
    app.chat().stop();
    EXPECT_FALSE(description().contains(u"Answering"_s));
}

TEST_F(SidebarTest, theListFollowsARunningTurn) {
    const QUuid other = addChat(u"Morning"_s, clock.now().addSecs(60));
    clock.advance(1h);
    EXPECT_EQ(listed().first(), u"Morning"_s);
    const QUuid open = openID();
    engine.answer(Script(200).hold());
    app.chat().send(u"Hello!"_s);
    EXPECT_TRUE(eventually([&] {
        return isMarked(open) && list()->indexAt({9, 9}).row() == 0 && list()->frameOf(open).top() == 0;
    })) << "what is written to is the newest";
    app.chat().renameConversation(open, u"Greetings"_s);
    EXPECT_EQ(listed(), (QStringList{u"Greetings"_s, u"Morning"_s}));
    app.chat().openConversation(other);
    EXPECT_TRUE(app.chat().isGenerating());
    EXPECT_TRUE(isMarked(other));
    app.chat().stop();
}

TEST_F(SidebarTest, everyControlHasANameAndAKeyboardWay) {
    for (QPushButton *control : sidebar.findChildren<QPushButton *>()) {
        EXPECT_FALSE(spokenName(control).isEmpty());
        EXPECT_EQ(control->focusPolicy(), Qt::StrongFocus);
    }
    QStringList stops;
    buttonNamed(sidebar, u"New Chat"_s)->setFocus(Qt::TabFocusReason);
    for (int stop = 0; stop < 5; ++stop) {
        stops.append(spokenName(sidebar.focusWidget()));
        QTest::keyClick(sidebar.focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(stops,
              (QStringList{u"New Chat"_s, u"Settings"_s, u"All time"_s, u"Chats"_s, u"Offline Mode"_s}));
}

TEST_F(SidebarTest, nothingIsCutOffAtItsLeastWidthAndLargestText) {
    Settings settings;
    settings.textSize = TextSize::extraLarge;
    settings.typeFace = TypeFace::serif;
    look.follow(settings);
    sidebar.resize(style::sidebarMinimumWidth, 500);
    QCoreApplication::processEvents();
    EXPECT_EQ(sidebar.width(), style::sidebarMinimumWidth);
    for (const QPushButton *control : sidebar.findChildren<QPushButton *>()) {
        EXPECT_GE(control->width(), control->sizeHint().width()) << control->text().toStdString();
        EXPECT_TRUE(sidebar.rect().contains(QRect(control->mapTo(&sidebar, QPoint()), control->size())));
    }
}

TEST_F(SidebarTest, aListOfTenThousandFindsItsOpenChat) {
    SidebarModel model;
    model.offersSearch = true;
    for (int index = 0; index < 10'000; ++index)
        model.chats.append({QUuid::createUuid(), u"Chat"_s, clock.now(), 0});
    model.openID = model.chats.last().id;
    sidebar.setModel(model);
    EXPECT_TRUE(isMarked(model.openID));
    EXPECT_TRUE(list()->viewport()->rect().contains(list()->frameOf(model.openID)));
}
