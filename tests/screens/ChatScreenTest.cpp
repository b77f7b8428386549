#include "screens/ChatScreen.h"

#include "screens/AppFixture.h"
#include "screens/Browser.h"
#include "screens/ComposerTextView.h"
#include "screens/Label.h"
#include "screens/MessageList.h"
#include "screens/MessageRow.h"
#include "screens/SpokenNotice.h"
#include "screens/StatusDot.h"
#include "screens/Style.h"
#include "screens/Toast.h"
#include "screens/UpdateNotice.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMap>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

const QString stillAnswering = u"Ostrelin is still answering. Stop that first, or wait for it to finish."_s;
const QString forgotten = u"Did you forget to type a message to the AI?"_s;

class ChatScreenTest : public AppFixture {
protected:
    ChatScreenTest() : screen((start(), app), look, clock) {
        screen.resize(style::contentMinimumWidth, style::contentMinimumHeight);
        present(screen);
    }

    ComposerTextView *field() const { return screen.findChild<ComposerTextView *>(); }
    MessageList *list() const { return screen.findChild<MessageList *>(); }
    QString toast() const { return screen.findChild<Toast *>()->text(); }

    /// What is told to those who hear the screen.
    QString notice() const {
        auto *teller = screen.findChild<SpokenNotice *>();
        return teller->isVisible() ? spokenName(teller) : QString();
    }

    void type(const QString &text) { QTest::keyClicks(field(), text); }
    void pressReturn() { QTest::keyClick(field(), Qt::Key_Return); }

    /// What the reader sees, row by row.
    QStringList shownTexts() const {
        QStringList texts;
        for (const MessageRowModel &row : screen.model().rows) {
            const MessageRow *widget = list()->rowWidget(row.id);
            texts.append(widget && widget->textView() ? widget->textView()->text() : u"…"_s);
        }
        return texts;
    }

    bool shows(const QString &wanted) const {
        const auto texts = screen.findChildren<TextView *>();
        return std::any_of(texts.begin(), texts.end(),
                           [&](const TextView *text) { return text->isVisible() && text->text() == wanted; });
    }

    StillLook look;
    ChatScreen screen;
};

} // namespace

TEST_F(ChatScreenTest, aNewChatShowsTheHeadingAndTheSuggestions) {
    EXPECT_FALSE(list()->isVisible());
    for (const QString &text : suggestions())
        EXPECT_TRUE(buttonNamed(screen, text));
    const auto labels = screen.findChildren<Label *>();
    EXPECT_TRUE(std::any_of(labels.begin(), labels.end(), [](const Label *label) {
        return label->isVisible() && label->text() == u"What can I help you with?"_s;
    }));
}

TEST_F(ChatScreenTest, theFocusIsInTheComposerFromTheStart) {
    EXPECT_EQ(screen.focusWidget(), field());
}

TEST_F(ChatScreenTest, returnSendsTheDraftAndTheReplyIsShown) {
    engine.answer(Script::reply({u"Hel"_s, u"lo."_s}));
    type(u"Hi"_s);
    EXPECT_EQ(screen.draft(), u"Hi"_s);
    pressReturn();
    EXPECT_EQ(screen.draft(), QString());
    EXPECT_EQ(field()->writtenText(), QString());
    finishTurn();
    EXPECT_EQ(shownTexts(), (QStringList{u"Hi"_s, u"Hello."_s}));
    EXPECT_TRUE(list()->isVisible());
    EXPECT_EQ(screen.focusWidget(), field());
}

TEST_F(ChatScreenTest, theButtonSendsToo) {
    engine.answer(Script::reply({u"Yes."_s}));
    type(u"Hi"_s);
    click(buttonNamed(screen, u"Send message"_s));
    finishTurn();
    EXPECT_EQ(shownTexts(), (QStringList{u"Hi"_s, u"Yes."_s}));
}

TEST_F(ChatScreenTest, anEmptyBoxSendsNothingAndTellsSo) {
    click(buttonNamed(screen, u"Send message"_s));
    EXPECT_EQ(toast(), forgotten);
    type(u"  "_s);
    pressReturn();
    EXPECT_EQ(toast(), forgotten);
    EXPECT_EQ(field()->writtenText(), u"  "_s);
    EXPECT_TRUE(engine.requests().isEmpty());
}

TEST_F(ChatScreenTest, returnDuringAReplyKeepsTheText) {
    engine.answer(Script().content(u"Hel"_s).hold());
    type(u"Hi"_s);
    pressReturn();
    ASSERT_TRUE(eventually([this] { return shownTexts().value(1) == u"Hel"_s; }));
    type(u"And"_s);
    pressReturn();
    EXPECT_EQ(toast(), stillAnswering);
    EXPECT_EQ(field()->writtenText(), u"And"_s);
    EXPECT_EQ(app.chat().conversation()->messages.size(), 2);
}

TEST_F(ChatScreenTest, theStopButtonEndsTheReply) {
    engine.answer(Script().content(u"Hel"_s).hold());
    screen.submit(u"Hi"_s);
    ASSERT_TRUE(eventually([this] { return shownTexts().value(1) == u"Hel"_s; }));
    EXPECT_FALSE(buttonNamed(screen, u"Send message"_s));
    click(buttonNamed(screen, u"Stop generating"_s));
    EXPECT_FALSE(app.chat().isGenerating());
    EXPECT_TRUE(buttonNamed(screen, u"Send message"_s));
}

TEST_F(ChatScreenTest, aSuggestionIsSentAndClearsTheDraft) {
    engine.answer(Script::reply({u"Bean There"_s}));
    type(u"draft"_s);
    click(buttonNamed(screen, suggestions().at(2)));
    EXPECT_EQ(field()->writtenText(), QString());
    finishTurn();
    EXPECT_EQ(shownTexts(), (QStringList{suggestions().at(2), u"Bean There"_s}));
}

TEST_F(ChatScreenTest, aSuggestionIsReachedByKeys) {
    engine.answer(Script::reply({u"Yes."_s}));
    QPushButton *button = buttonNamed(screen, suggestions().at(0));
    button->setFocus(Qt::TabFocusReason);
    QTest::keyClick(button, Qt::Key_Return);
    finishTurn();
    EXPECT_EQ(shownTexts().value(0), suggestions().at(0));
}

TEST_F(ChatScreenTest, aNewChatEmptiesTheList) {
    engine.answer(Script::reply({u"Yes."_s}));
    screen.submit(u"Hi"_s);
    finishTurn();
    app.chat().newChat();
    EXPECT_TRUE(screen.model().showsEmptyState);
    EXPECT_FALSE(list()->isVisible());
}

TEST_F(ChatScreenTest, aFailedEngineHasABannerAndARedLamp) {
    EXPECT_FALSE(buttonNamed(screen, u"Try again"_s));
    ChatScreenModel model = screen.model();
    model.engineFailure = u"It broke."_s;
    model.lamp = statusLamp(EngineStatus::failed(u"It broke."_s));
    screen.setModel(model);
    EXPECT_TRUE(buttonNamed(screen, u"Try again"_s));
    EXPECT_EQ(spokenName(screen.findChild<StatusDot *>()), u"Ostrelin status: Engine error"_s);
    EXPECT_TRUE(shows(u"It broke."_s));
}

TEST_F(ChatScreenTest, theBannersButtonStartsTheEngineAnew) {
    ChatScreenModel model = screen.model();
    model.engineFailure = u"It broke."_s;
    screen.setModel(model);
    QSignalSpy phases(&app, &AppState::phaseChanged);
    click(buttonNamed(screen, u"Try again"_s));
    EXPECT_EQ(phases.count(), 2);
    EXPECT_TRUE(isIn<phase::Ready>(app.phase()));
}

TEST_F(ChatScreenTest, aBetterModelIsOfferedAndCanBeTurnedDown) {
    EXPECT_FALSE(buttonNamed(screen, u"Download"_s));
    app.chat().setUpgradeBanner(u"Your Mac can run more."_s);
    EXPECT_TRUE(shows(u"Your Mac can run more."_s));
    ASSERT_TRUE(buttonNamed(screen, u"Not now"_s));
    click(buttonNamed(screen, u"Not now"_s));
    EXPECT_FALSE(app.chat().upgradeBanner());
    EXPECT_FALSE(buttonNamed(screen, u"Not now"_s));
}

TEST_F(ChatScreenTest, anUpdateIsToldOfUntilItIsDismissed) {
    app.changeSetting(&Settings::searchMode, SearchMode::ask);
    network.answerEach(
        [](const ScriptedEngine::Request &) { return Script(200).raw(R"({"version": "99.1"})"); });
    app.updates().check();
    ASSERT_TRUE(eventually([this] { return shows(u"Ostrelin 99.1 is available."_s); }));
    EXPECT_FALSE(buttonNamed(screen, u"Download"_s)) << "nobody knows where";
    click(buttonNamed(screen, u"Not now"_s));
    EXPECT_FALSE(buttonNamed(screen, u"Not now"_s));
    EXPECT_EQ(loadSettings().dismissedUpdateVersion, u"99.1"_s);
}

TEST_F(ChatScreenTest, anUpdateWithAnAddressCanBeDownloaded) {
    ChatScreenModel model = screen.model();
    model.updateNotice = updateNotice({.version = u"0.2.0"_s});
    model.updateURL = QUrl(u"https://ostrelin.example/get"_s);
    screen.setModel(model);
    const Browser browser;
    click(buttonNamed(screen, u"Download"_s));
    EXPECT_EQ(browser.opened, QList{QUrl(u"https://ostrelin.example/get"_s)});
}

TEST_F(ChatScreenTest, theBannersStandInTheirOrder) {
    ChatScreenModel model = screen.model();
    model.engineFailure = u"engine"_s;
    model.memoryWarning = u"memory"_s;
    model.updateNotice = u"update"_s;
    model.upgradeOffer = u"upgrade"_s;
    model.moveHint = u"move"_s;
    screen.setModel(model);
    QCoreApplication::processEvents();
    QMap<int, QString> found;
    for (const TextView *text : screen.findChildren<TextView *>()) {
        if (text->isVisible())
            found.insert(text->mapTo(&screen, QPoint()).y(), text->text());
    }
    EXPECT_EQ(found.values(), (QStringList{u"move"_s, u"upgrade"_s, u"update"_s, u"memory"_s, u"engine"_s}));
}

TEST_F(ChatScreenTest, itFollowsEverythingThatIsPublished) {
    ChatController &chat = app.chat();
    const std::function<void()> changes[] = {
        [&] { Q_EMIT app.activeTierChanged(); },
        [&] { Q_EMIT app.needsMoveToApplicationsChanged(); },
        [&] { Q_EMIT app.settingsChanged(); },
        [&] { Q_EMIT app.engine().statusChanged(); },
        [&] { Q_EMIT chat.conversationChanged(); },
        [&] { Q_EMIT chat.isGeneratingChanged(); },
        [&] { Q_EMIT chat.streamingIDChanged(); },
        [&] { Q_EMIT chat.upgradeBannerChanged(); },
        [&] { Q_EMIT chat.memoryWarningChanged(); },
        [&] { Q_EMIT chat.showSearchHintChanged(); },
        [&] { Q_EMIT chat.consent().pendingPermissionChanged(); },
        [&] { Q_EMIT chat.consent().pendingPageOfferChanged(); },
        [&] { Q_EMIT chat.consent().pendingMemoryChanged(); },
    };
    const ChatScreenModel published = screen.model();
    int place = 0;
    for (const std::function<void()> &tellChange : changes) {
        ChatScreenModel other = published;
        other.title = u"another"_s;
        screen.setModel(other);
        tellChange();
        EXPECT_EQ(screen.model(), published) << place++;
    }
}

TEST_F(ChatScreenTest, theWayBackToTheEndIsOfferedWhileAReplyIsWritten) {
    const QString name = u"Go to the end"_s;
    ChatScreenModel model = screen.model();
    model.showsEmptyState = false;
    for (int row = 0; row < 30; ++row)
        model.rows.append({QUuid::createUuid(), MessageRowModel::Kind::assistant, u"text"_s});
    screen.setModel(model);
    QTest::keyClick(field(), Qt::Key_PageUp);
    EXPECT_FALSE(buttonNamed(screen, name)) << "nothing is written";
    model.rows.last().isStreaming = true;
    screen.setModel(model);
    QPushButton *button = buttonNamed(screen, name);
    ASSERT_TRUE(button);
    const QWidget *composer = field()->parentWidget();
    const QRect area =
        composer->geometry().adjusted(style::shadowReach, style::shadowReach, -style::shadowReach, 0);
    EXPECT_EQ(button->geometry().right(), area.right());
    EXPECT_LT(button->geometry().bottom(), area.top());
    EXPECT_EQ(screen.childAt(button->geometry().center()), button) << "it stands before the messages";
    click(button);
    EXPECT_TRUE(list()->followsEnd());
    EXPECT_FALSE(button->isVisible());
    EXPECT_EQ(screen.focusWidget(), field());
    QTest::keyClick(field(), Qt::Key_PageUp);
    EXPECT_TRUE(button->isVisible());
    model.rows.last().isStreaming = false;
    screen.setModel(model);
    EXPECT_FALSE(button->isVisible());
}

TEST_F(ChatScreenTest, aTemporaryPlaceIsPointedOut) {
    ChatScreenModel model = screen.model();
    model.moveHint = u"Move it."_s;
    screen.setModel(model);
    EXPECT_TRUE(shows(u"Move it."_s));
    EXPECT_FALSE(buttonNamed(screen, u"Try again"_s));
}

TEST_F(ChatScreenTest, aReplyIsCopiedAsItWasWritten) {
    engine.answer(Script::reply({u"**Hel**"_s, u"lo."_s}));
    screen.submit(u"Hi"_s);
    finishTurn();
    click(buttonNamed(screen, u"Copy"_s));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"**Hel**lo."_s);
    EXPECT_EQ(toast(), u"Copied"_s);
}

TEST_F(ChatScreenTest, theLastReplyIsRegenerated) {
    engine.answer(Script::reply({u"one"_s}));
    engine.answer(Script::reply({u"Title"_s}));
    engine.answer(Script().content(u"tw"_s).hold().content(u"o"_s).done());
    screen.submit(u"Hi"_s);
    finishTurn();
    QPushButton *button = buttonNamed(screen, u"Regenerate"_s);
    button->setFocus(Qt::TabFocusReason);
    QTest::keyClick(button, Qt::Key_Return);
    ASSERT_TRUE(eventually([this] { return shownTexts().value(1) == u"tw"_s; }));
    EXPECT_EQ(screen.focusWidget(), field());
    EXPECT_FALSE(buttonNamed(screen, u"Regenerate"_s));
    ASSERT_TRUE(eventually([this] {
        engine.goOn();
        return !app.chat().isGenerating();
    }));
    EXPECT_EQ(shownTexts(), (QStringList{u"Hi"_s, u"two"_s}));
    EXPECT_TRUE(buttonNamed(screen, u"Regenerate"_s));
}

TEST_F(ChatScreenTest, pageKeysInTheComposerMoveTheMessages) {
    ChatScreenModel model = screen.model();
    model.showsEmptyState = false;
    for (int row = 0; row < 30; ++row)
        model.rows.append({QUuid::createUuid(), MessageRowModel::Kind::assistant, u"text"_s});
    screen.setModel(model);
    EXPECT_TRUE(list()->followsEnd());
    QTest::keyClick(field(), Qt::Key_PageUp);
    EXPECT_FALSE(list()->followsEnd());
    QTest::keyClick(field(), Qt::Key_PageDown);
    EXPECT_TRUE(list()->followsEnd());
}

TEST_F(ChatScreenTest, aLongTextHasThePageKeysToItself) {
    ChatScreenModel model = screen.model();
    model.showsEmptyState = false;
    for (int row = 0; row < 30; ++row)
        model.rows.append({QUuid::createUuid(), MessageRowModel::Kind::assistant, u"text"_s});
    screen.setModel(model);
    field()->setWrittenText(u"a\n"_s.repeated(100));
    field()->moveCursor(QTextCursor::End);
    const int end = field()->textCursor().position();
    QTest::keyClick(field(), Qt::Key_PageUp);
    EXPECT_LT(field()->textCursor().position(), end - 4);
    EXPECT_TRUE(list()->followsEnd());
}

TEST_F(ChatScreenTest, shiftAndAPageKeySelect) {
    field()->setWrittenText(u"one\ntwo"_s);
    field()->moveCursor(QTextCursor::End);
    QTest::keyClick(field(), Qt::Key_PageUp, Qt::ShiftModifier);
    EXPECT_TRUE(field()->textCursor().hasSelection());
}

TEST_F(ChatScreenTest, everyButtonHasANameAndAKeyboardWay) {
    for (const QPushButton *button : screen.findChildren<QPushButton *>()) {
        EXPECT_FALSE(button->accessibleName().isEmpty());
        EXPECT_TRUE(button->focusPolicy() & Qt::TabFocus);
    }
}

TEST_F(ChatScreenTest, inTheNarrowestChatEverythingIsThereInTheLargestText) {
    Settings settings;
    settings.textSize = TextSize::extraLarge;
    settings.typeFace = TypeFace::serif;
    look.follow(settings);
    ChatScreenModel model = screen.model();
    model.upgradeOffer = u"Your Mac can run a smarter version of Ostrelin. Download (9.0 GB)?"_s;
    model.emptyHint = u"Great for writing, brainstorming and quick questions."_s;
    screen.setModel(model);
    screen.resize(380, style::contentMinimumHeight);
    QCoreApplication::processEvents();
    EXPECT_EQ(screen.width(), 380);
    EXPECT_LE(screen.minimumSizeHint().width(), 380);
    for (const QString &name : {u"Response speed"_s, u"Think longer"_s, u"Attach a file"_s, u"Send message"_s,
                                u"Download"_s, u"Not now"_s}) {
        const QPushButton *button = buttonNamed(screen, name);
        ASSERT_TRUE(button) << name.toStdString();
        EXPECT_GE(button->width(), button->minimumSizeHint().width()) << name.toStdString();
        EXPECT_TRUE(screen.rect().contains(QRect(button->mapTo(&screen, QPoint()), button->size())));
    }
}

TEST_F(ChatScreenTest, atItsSmallestNothingOverlaps) {
    ChatScreenModel model = screen.model();
    model.engineFailure = u"A long line of the engine's log. "_s.repeated(30);
    model.upgradeOffer = u"Your Mac can run a smarter version of Ostrelin. Download (9.0 GB)?"_s;
    model.moveHint = u"Ostrelin is running from a temporary location. "_s.repeated(2);
    for (const TextSize size : {TextSize::small, TextSize::extraLarge}) {
        Settings settings;
        settings.textSize = size;
        look.follow(settings);
        screen.setModel(model);
        QCoreApplication::processEvents();
        EXPECT_LE(screen.minimumSizeHint().height(), style::contentMinimumHeight);
        EXPECT_LE(screen.minimumSizeHint().width(), style::contentMinimumWidth);
        EXPECT_GT(field()->height(), 10);
    }
}

namespace {

/// A machine that could carry a better model than the one that is installed.
class UpgradeTest : public AppFixture {
protected:
    UpgradeTest() {
        machine.gpuBudget = 20'000'000'000;
        machine.totalRAM = 64'000'000'000;
        start();
    }
};

} // namespace

TEST_F(UpgradeTest, theOfferedModelIsDownloaded) {
    const StillLook look;
    ChatScreen screen(app, look, clock);
    present(screen);
    ASSERT_TRUE(buttonNamed(screen, u"Download"_s));
    click(buttonNamed(screen, u"Download"_s));
    ASSERT_TRUE(app.pendingTier());
    EXPECT_EQ(app.pendingTier()->id, mansion.id);
    EXPECT_FALSE(buttonNamed(screen, u"Download"_s));
}

TEST_F(ChatScreenTest, theEndOfAReplyIsTold) {
    engine.answer(Script().content(u"Hel"_s).hold());
    type(u"Hi"_s);
    pressReturn();
    ASSERT_TRUE(eventually([this] { return shownTexts().contains(u"Hel"_s); }));
    EXPECT_EQ(notice(), QString());
    app.chat().stop();
    finishTurn();
    EXPECT_EQ(notice(), u"The reply has ended."_s);
    EXPECT_EQ(spokenRole(screen.findChild<SpokenNotice *>()), QAccessible::Notification);
    type(u"And?"_s);
    pressReturn();
    EXPECT_EQ(notice(), QString()) << "it is about the reply before";
}

TEST_F(ChatScreenTest, aChatThatIsOpenedTellsNothing) {
    engine.answer(Script::reply({u"Hello."_s}));
    type(u"Hi"_s);
    pressReturn();
    finishTurn();
    const QUuid answered = app.chat().conversation()->id;
    app.chat().newChat();
    EXPECT_EQ(notice(), QString());
    app.chat().openConversation(answered);
    EXPECT_EQ(notice(), QString());
}
