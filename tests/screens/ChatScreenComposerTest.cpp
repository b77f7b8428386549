#include "platform/MemoryPressure.h"
#include "screens/AppFixture.h"
#include "screens/AttachmentChip.h"
#include "screens/ChatScreen.h"
#include "screens/ComposerTextView.h"
#include "screens/MessageList.h"
#include "screens/Style.h"
#include "screens/TextView.h"
#include "screens/Toast.h"

#include <QClipboard>
#include <QDropEvent>
#include <QFileDialog>
#include <QGuiApplication>
#include <QJsonArray>
#include <QMimeData>
#include <QStandardPaths>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString thinkNext = u"Think longer mode will be enabled when you send your next message."_s;

/// What the composer does in the chat: the chips, and the files that go with a message.
class ChatScreenComposerTest : public AppFixture {
protected:
    ChatScreenComposerTest() : screen((start(), app), look, clock) {
        screen.resize(style::contentMinimumWidth, style::contentMinimumHeight);
        present(screen);
    }

    ComposerTextView *field() const { return screen.findChild<ComposerTextView *>(); }
    QString toast() const { return screen.findChild<Toast *>()->text(); }
    void press(const QString &name) { click(buttonNamed(screen, name)); }

    void say(const QString &text) {
        screen.submit(text);
        finishTurn();
    }

    /// Whether the model was asked to think about that question.
    bool thoughtAbout(const QString &question) const {
        for (const ScriptedEngine::Request &request : engine.requests()) {
            const QJsonObject body = request.json();
            const QString last = body["messages"_L1].toArray().last().toObject()["content"_L1].toString();
            if (last == question)
                return body["chat_template_kwargs"_L1].toObject()["enable_thinking"_L1].toBool();
        }
        ADD_FAILURE() << "nobody asked " << question.toStdString();
        return false;
    }

    /// The path of a new file.
    QString file(const QString &name, const QByteArray &bytes = "text") const {
        QFile made(files.filePath(name));
        EXPECT_TRUE(made.open(QIODevice::WriteOnly));
        made.write(bytes);
        return made.fileName();
    }

    /// The names of the files that wait, as the person sees them.
    QStringList waiting() const {
        QCoreApplication::processEvents();
        QStringList names;
        for (const AttachmentChip *chip : screen.findChildren<AttachmentChip *>()) {
            if (chip->isVisible() && chip->removeButton())
                names.append(chip->name());
        }
        return names;
    }

    QFileDialog *openedDialog() {
        press(u"Attach a file"_s);
        return screen.findChild<QFileDialog *>();
    }

    void chooseNothingIn(const QString &where) {
        QFileDialog *dialog = openedDialog();
        dialog->setDirectory(where);
        dialog->reject();
        ASSERT_TRUE(eventually([this] { return !screen.findChild<QFileDialog *>(); }));
    }

    static std::unique_ptr<QMimeData> data(const QStringList &paths) {
        auto data = std::make_unique<QMimeData>();
        QList<QUrl> urls;
        for (const QString &path : paths)
            urls.append(QUrl::fromLocalFile(path));
        data->setUrls(urls);
        return data;
    }

    void paste(const QStringList &paths) {
        QGuiApplication::clipboard()->setMimeData(data(paths).release());
        QTest::keyClick(field(), Qt::Key_V, Qt::ControlModifier);
    }

    /// Drags that over the widget and drops it there; what becomes of it, or IgnoreAction if it isn't taken.
    static Qt::DropAction drop(QWidget *target, const QMimeData &data) {
        const QPoint place = target->rect().center();
        QDragEnterEvent enter(place, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
        enter.setDropAction(Qt::MoveAction);
        enter.ignore();
        QCoreApplication::sendEvent(target, &enter);
        if (!enter.isAccepted())
            return Qt::IgnoreAction;
        QDropEvent dropped(place, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
        dropped.setDropAction(enter.dropAction());
        QCoreApplication::sendEvent(target, &dropped);
        return dropped.dropAction();
    }

    const Message &lastQuestion() {
        const QList<Message> &messages = app.chat().conversation()->messages;
        return *std::find_if(messages.rbegin(), messages.rend(),
                             [](const Message &message) { return message.role == Role::user; });
    }

    QTemporaryDir files;
    StillLook look;
    ChatScreen screen;
};

} // namespace

TEST_F(ChatScreenComposerTest, everyPressOfTheSpeedChipIsSaved) {
    for (const auto speed : {ResponseSpeed::calm, ResponseSpeed::slowYourRoll, ResponseSpeed::full}) {
        press(u"Response speed"_s);
        EXPECT_EQ(app.settings().responseSpeed, speed);
        EXPECT_EQ(loadSettings().responseSpeed, speed);
    }
}

TEST_F(ChatScreenComposerTest, theSpeedChipFollowsTheSettings) {
    Settings settings = app.settings();
    settings.responseSpeed = ResponseSpeed::slowYourRoll;
    app.saveSettings(settings);
    EXPECT_EQ(buttonNamed(screen, u"Response speed"_s)->text(), u"Slow your roll"_s);
}

TEST_F(ChatScreenComposerTest, thinkingForTheNextReplyIsForThatAlone) {
    engine.answer(Script::reply({u"Yes."_s}));
    press(u"Think longer"_s);
    EXPECT_EQ(screen.thinkMode(), ThinkMode::nextReply);
    say(u"One?"_s);
    EXPECT_EQ(screen.thinkMode(), ThinkMode::off);
    say(u"Two?"_s);
    EXPECT_TRUE(thoughtAbout(u"One?"_s));
    EXPECT_FALSE(thoughtAbout(u"Two?"_s));
}

TEST_F(ChatScreenComposerTest, thinkingAlwaysStays) {
    engine.answer(Script::reply({u"Yes."_s}));
    press(u"Think longer"_s);
    press(u"Think longer"_s);
    say(u"One?"_s);
    say(u"Two?"_s);
    EXPECT_EQ(screen.thinkMode(), ThinkMode::always);
    EXPECT_TRUE(thoughtAbout(u"One?"_s));
    EXPECT_TRUE(thoughtAbout(u"Two?"_s));
}

TEST_F(ChatScreenComposerTest, aRefusedMessageKeepsTheModeAndTheFiles) {
    engine.answer(Script().content(u"Hel"_s).hold());
    screen.submit(u"Hi"_s);
    press(u"Think longer"_s);
    screen.attach({file(u"a.txt"_s)});
    screen.submit();
    EXPECT_EQ(toast(), u"Ostrelin is still answering. Stop that first, or wait for it to finish."_s);
    EXPECT_EQ(screen.thinkMode(), ThinkMode::nextReply);
    EXPECT_EQ(waiting(), QStringList(u"a.txt"_s));
}

TEST_F(ChatScreenComposerTest, duringAReplyEveryPressThatTurnsThinkingOnHasAToast) {
    press(u"Think longer"_s);
    EXPECT_EQ(toast(), QString()) << "no reply is being written";
    press(u"Think longer"_s);
    press(u"Think longer"_s);
    engine.answer(Script().content(u"Hel"_s).hold());
    screen.submit(u"Hi"_s);
    press(u"Think longer"_s);
    EXPECT_EQ(toast(), thinkNext);
    clock.advance(2s);
    press(u"Think longer"_s);
    clock.advance(2s);
    QCoreApplication::processEvents();
    EXPECT_EQ(toast(), thinkNext) << "the second one stands its full time";
    clock.advance(600ms);
    QCoreApplication::processEvents();
    EXPECT_EQ(toast(), QString());
    press(u"Think longer"_s);
    EXPECT_EQ(toast(), QString()) << "that turned it off";
}

TEST_F(ChatScreenComposerTest, filesAreChosenInADialog) {
    QFileDialog *dialog = openedDialog();
    ASSERT_TRUE(dialog);
    EXPECT_EQ(dialog->windowTitle(), u"Attach"_s);
    EXPECT_EQ(dialog->labelText(QFileDialog::Accept), u"Attach"_s);
    EXPECT_EQ(dialog->fileMode(), QFileDialog::ExistingFiles);
    EXPECT_TRUE(dialog->isModal());
    EXPECT_TRUE(dialog->nameFilters().value(0).contains(u"*.md "_s));
    screen.attach({file(u"first.txt"_s)});
    Q_EMIT dialog->filesSelected({file(u"b.md"_s), file(u"a.csv"_s)});
    EXPECT_EQ(waiting(), (QStringList{u"first.txt"_s, u"b.md"_s, u"a.csv"_s}));
    EXPECT_EQ(screen.focusWidget(), field());
}

TEST_F(ChatScreenComposerTest, aFileIsChosenAndTheDialogIsGone) {
    QFileDialog *dialog = openedDialog();
    dialog->setDirectory(files.path());
    dialog->selectFile(file(u"notes.txt"_s));
    QPushButton *attach = buttonNamed(*dialog, u"Attach"_s);
    ASSERT_TRUE(attach);
    ASSERT_TRUE(eventually([attach] { return attach->isEnabled(); }));
    click(attach);
    EXPECT_EQ(waiting(), QStringList(u"notes.txt"_s));
    EXPECT_TRUE(eventually([this] { return !screen.findChild<QFileDialog *>(); }));
}

TEST_F(ChatScreenComposerTest, aCancelledDialogChangesNothing) {
    screen.attach({file(u"a.txt"_s)});
    openedDialog()->reject();
    EXPECT_EQ(waiting(), QStringList(u"a.txt"_s));
    EXPECT_TRUE(eventually([this] { return !screen.findChild<QFileDialog *>(); }));
}

TEST_F(ChatScreenComposerTest, filesWithoutTextAreLeftOutWithoutAWord) {
    screen.attach(
        {file(u"blank.txt"_s, " \n\n"), files.filePath(u"gone.txt"_s), file(u"a.txt"_s), files.path()});
    EXPECT_EQ(waiting(), QStringList(u"a.txt"_s));
    EXPECT_EQ(toast(), QString());
}

TEST_F(ChatScreenComposerTest, aFileCanBeTakenAwayAgain) {
    screen.attach({file(u"a.txt"_s)});
    EXPECT_EQ(waiting(), QStringList(u"a.txt"_s));
    press(u"Remove"_s);
    EXPECT_EQ(waiting(), QStringList());
    EXPECT_TRUE(screen.attachments().isEmpty());
}

TEST_F(ChatScreenComposerTest, theFilesGoWithTheMessageAndAreGone) {
    engine.answer(Script::reply({u"Milk."_s}));
    screen.attach({file(u"shopping.txt"_s, "milk\n"), file(u"b.txt"_s)});
    QTest::keyClicks(field(), u"What do I need?"_s);
    QTest::keyClick(field(), Qt::Key_Return);
    finishTurn();
    EXPECT_EQ(waiting(), QStringList());
    ASSERT_EQ(lastQuestion().attachments.value_or(QList<Attachment>()).size(), 2);
    EXPECT_EQ(lastQuestion().attachments->first().name, u"shopping.txt"_s);
    EXPECT_EQ(lastQuestion().attachments->first().text, u"milk"_s);
    EXPECT_EQ(lastQuestion().content, u"What do I need?"_s);
    EXPECT_EQ(screen.model().rows.at(0).attachments, (QStringList{u"shopping.txt"_s, u"b.txt"_s}));
}

TEST_F(ChatScreenComposerTest, aFileAloneIsAMessage) {
    engine.answer(Script::reply({u"Milk."_s}));
    screen.attach({file(u"shopping.txt"_s)});
    press(u"Send message"_s);
    finishTurn();
    EXPECT_EQ(toast(), QString());
    EXPECT_EQ(lastQuestion().content, QString());
    EXPECT_EQ(lastQuestion().attachments.value_or(QList<Attachment>()).size(), 1);
}

TEST_F(ChatScreenComposerTest, aSuggestionTakesNoFilesAlongButClearsThem) {
    engine.answer(Script::reply({u"Yes."_s}));
    screen.attach({file(u"a.txt"_s)});
    press(suggestions().at(0));
    finishTurn();
    EXPECT_FALSE(lastQuestion().attachments);
    EXPECT_EQ(waiting(), QStringList());
}

TEST_F(ChatScreenComposerTest, droppedFilesAreAttachedAndStayWhereTheyAre) {
    EXPECT_EQ(drop(&screen, *data({file(u"a.txt"_s), file(u"b.JSON"_s)})), Qt::CopyAction);
    EXPECT_EQ(waiting(), (QStringList{u"a.txt"_s, u"b.JSON"_s}));
    EXPECT_EQ(drop(field()->viewport(), *data({file(u"c.md"_s)})), Qt::CopyAction);
    EXPECT_EQ(waiting(), (QStringList{u"a.txt"_s, u"b.JSON"_s, u"c.md"_s}));
    EXPECT_EQ(field()->writtenText(), QString());
}

TEST_F(ChatScreenComposerTest, whatIsNoTextIsNotTaken) {
    EXPECT_EQ(drop(&screen, *data({file(u"a.png"_s, "\x89PNG")})), Qt::IgnoreAction);
    EXPECT_EQ(drop(field()->viewport(), *data({file(u"a.png"_s)})), Qt::IgnoreAction);
    drop(&screen, *data({file(u"a.png"_s), file(u"a.txt"_s)}));
    EXPECT_EQ(waiting(), QStringList(u"a.txt"_s));
    QMimeData picture;
    picture.setImageData(QImage(2, 2, QImage::Format_RGB32));
    EXPECT_EQ(drop(&screen, picture), Qt::IgnoreAction);
    EXPECT_EQ(drop(field()->viewport(), picture), Qt::IgnoreAction);
}

TEST_F(ChatScreenComposerTest, droppedTextGoesIntoTheField) {
    QMimeData text;
    text.setText(u"Hello"_s);
    EXPECT_EQ(drop(&screen, text), Qt::IgnoreAction);
    EXPECT_NE(drop(field()->viewport(), text), Qt::IgnoreAction);
    EXPECT_EQ(field()->writtenText(), u"Hello"_s);
}

TEST_F(ChatScreenComposerTest, pastedFilesAreAttached) {
    paste({file(u"a.txt"_s), file(u"b.png"_s)});
    EXPECT_EQ(waiting(), QStringList(u"a.txt"_s));
    EXPECT_EQ(field()->writtenText(), QString());
}

TEST_F(ChatScreenComposerTest, whereAFileIsNotTakenItIsSaid) {
    const QString note = u"Only text files can be attached."_s;
    paste({file(u"b.png"_s)});
    EXPECT_EQ(waiting(), QStringList());
    EXPECT_EQ(toast(), note);
    clock.advance(3s);
    QCoreApplication::processEvents();
    paste({file(u"Makefile"_s), file(u".gitignore"_s), file(u"empty.txt"_s, {})});
    EXPECT_EQ(waiting(), (QStringList{u"Makefile"_s, u".gitignore"_s}));
    EXPECT_EQ(toast(), QString());
    drop(&screen, *data({file(u"a.txt"_s), file(u"b.png"_s)}));
    EXPECT_EQ(toast(), note);
}

TEST_F(ChatScreenComposerTest, theFirstDialogBeginsWithTheDocuments) {
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    const QString wanted = QDir(documents).exists() ? documents : QDir::homePath();
    ASSERT_NE(QDir(wanted), QDir::current());
    // As at the start of the program, whatever dialogs there were before.
    chooseNothingIn(QDir::currentPath());
    EXPECT_EQ(openedDialog()->directory(), QDir(wanted));
}

TEST_F(ChatScreenComposerTest, theNextDialogBeginsWhereThePersonWas) {
    chooseNothingIn(files.path());
    EXPECT_EQ(openedDialog()->directory(), QDir(files.path()));
}

TEST_F(ChatScreenComposerTest, whereEverythingIsDeletedTheDraftIsTooAndNowhereElse) {
    field()->setWrittenText(u"a secret"_s);
    screen.attach({file(u"a.txt"_s)});
    press(u"Think longer"_s);
    app.resolveModel();
    app.chat().newChat();
    EXPECT_EQ(screen.draft(), u"a secret"_s);
    EXPECT_EQ(waiting(), QStringList(u"a.txt"_s));
    EXPECT_EQ(screen.thinkMode(), ThinkMode::nextReply);
    app.deleteEverything();
    EXPECT_EQ(screen.draft(), QString());
    EXPECT_EQ(field()->writtenText(), QString());
    EXPECT_EQ(waiting(), QStringList());
    EXPECT_TRUE(screen.attachments().isEmpty());
    EXPECT_EQ(screen.thinkMode(), ThinkMode::off);
}

TEST_F(ChatScreenComposerTest, theToastStandsOverTheBoxHoweverItGrows) {
    auto *notice = screen.findChild<Toast *>();
    const auto gap = [&] {
        QCoreApplication::processEvents();
        const QWidget *composer = field()->parentWidget();
        return composer->y() + style::shadowReach - (notice->geometry().bottom() + 1);
    };
    screen.showToast(u"Hello"_s);
    const int before = gap();
    EXPECT_EQ(before, 11);
    EXPECT_NEAR(notice->geometry().center().x(), screen.width() / 2, 1);
    field()->setWrittenText(u"a\n"_s.repeated(20));
    EXPECT_EQ(gap(), before);
    screen.attach({file(u"a.txt"_s)});
    EXPECT_EQ(gap(), before);
    screen.resize(900, 700);
    EXPECT_EQ(gap(), before);
    EXPECT_NEAR(notice->geometry().center().x(), 450, 1);
}

TEST_F(ChatScreenComposerTest, escapeInTheComposerStopsTheReply) {
    QTest::keyClick(field(), Qt::Key_Escape);
    engine.answer(Script().content(u"Hel"_s).hold());
    screen.submit(u"Hi"_s);
    ASSERT_TRUE(eventually([this] { return screen.model().rows.value(1).text == u"Hel"_s; }));
    field()->setWrittenText(u"And"_s);
    QTest::keyClick(field(), Qt::Key_Escape);
    EXPECT_FALSE(app.chat().isGenerating());
    EXPECT_EQ(field()->writtenText(), u"And"_s);
}

TEST_F(ChatScreenComposerTest, aShortageOfMemoryHasABannerThatStays) {
    app.chat().startMemoryWatch();
    Q_EMIT app.chat().findChild<MemoryPressure *>()->critical();
    const auto shows = [this](const QString &wanted) {
        const auto texts = screen.findChildren<TextView *>();
        return std::any_of(texts.begin(), texts.end(),
                           [&](const TextView *text) { return text->isVisible() && text->text() == wanted; });
    };
    EXPECT_TRUE(shows(*app.chat().memoryWarning()));
    app.chat().newChat();
    EXPECT_TRUE(shows(*app.chat().memoryWarning()));
    app.chat().resetAll();
    EXPECT_FALSE(shows(u"Your Mac is running low on memory. Closing other apps will help, or switch to a "
                       "lighter model."_s));
}

TEST_F(ChatScreenComposerTest, atItsSmallestManyFilesAndALongTextLeaveRoomForTheMessages) {
    engine.answer(Script::reply({u"Yes."_s}));
    say(u"Hi"_s);
    screen.attach(QStringList(40, file(u"a rather long name of a file.txt"_s)));
    field()->setWrittenText(u"a\n"_s.repeated(200));
    const auto *list = screen.findChild<MessageList *>();
    for (const TextSize size : {TextSize::small, TextSize::extraLarge}) {
        Settings settings = app.settings();
        settings.textSize = size;
        look.follow(settings);
        QCoreApplication::processEvents();
        EXPECT_LE(screen.minimumSizeHint().height(), style::contentMinimumHeight);
        EXPECT_GT(list->height(), 40);
        EXPECT_LT(buttonNamed(screen, u"Send message"_s)->mapTo(&screen, QPoint()).y(), screen.height() - 40);
    }
}

TEST_F(ChatScreenComposerTest, theFieldTakesAThirdOfTheWindowAtMost) {
    field()->setWrittenText(u"a\n"_s.repeated(200));
    EXPECT_EQ(field()->height(), screen.height() / 3);
    screen.resize(900, 900);
    QCoreApplication::processEvents();
    EXPECT_EQ(field()->height(), 300);
}
