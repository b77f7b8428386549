#include "e2e/ConnectionRecord.h"
#include "e2e/TopLevelWindow.h"
#include "e2e/WindowFixture.h"
#include "platform/AtomicFile.h"
#include "records/Coder.h"
#include "records/Folders.h"
#include "records/Memory.h"
#include "records/Settings.h"
#include "support/DemoModel.h"
#include "support/EnvironmentVariable.h"
#include "support/ScriptedEngine.h"

#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

/// The window of the settings, and what is served where the program asks for anything.
class WindowSettings : public WindowFixture {
protected:
    WindowSettings() {
        catalog.answer(Script(404));
        versions.answer(Script(200).raw(R"({"version": "99.1"})"));
        searchPage.answer(Script(404));
    }

    void openSettings(const QString &pane) {
        if (!window().shows(pane, AccessibleRole::listItem)) {
            ASSERT_TRUE(window().press(u"Settings"_s));
            ASSERT_TRUE(window().waitFor(pane, AccessibleRole::listItem));
        }
        ASSERT_TRUE(window().press(pane, AccessibleRole::listItem));
    }

    void choose(const QString &word) {
        ASSERT_TRUE(window().waitFor(word, AccessibleRole::radioButton));
        ASSERT_TRUE(window().press(word, AccessibleRole::radioButton));
    }

    bool isChosen(const QString &word) {
        return window().waitFor(word, AccessibleRole::radioButton) &&
               window().isChosen(word, AccessibleRole::radioButton);
    }

    void endProgram() {
        program.signal(SIGTERM);
        ASSERT_TRUE(program.waitForEnd());
        EXPECT_TRUE(program.endedOrderly()) << program.output().toStdString();
    }

    /// A model that this machine can run is better than the one that is there.
    void offerUpgrade() {
        const ModelTier present = demoTier(catalog.url());
        ModelTier better = present;
        better.id = u"better"_s;
        better.requiredGPUBytes = 1;
        catalog.forgetAnswers();
        catalog.answer(Script(200).raw(encodeRecord(Catalog{1, {better, present}})));
    }

    void findUpdate() {
        openSettings(u"About"_s);
        ASSERT_TRUE(window().waitFor(u"Check for updates"_s, AccessibleRole::pushButton));
        ASSERT_TRUE(window().press(u"Check for updates"_s));
        ASSERT_TRUE(window().waitFor(u"Ostrelin 99.1 is available."_s, AccessibleRole::label));
    }

    /// Starts the program, asks something that a search would help with, looks at a pane, and stays until
    /// `isOver`.
    template<typename Condition>
    void useProgramUntil(Condition isOver) {
        startProgram();
        sinceReady.start();
        engine = enginePlace();
        send(u"Search the web for okra harvest in Tbilisi"_s);
        ASSERT_TRUE(waitForText());
        ASSERT_TRUE(program.waitForReply());
        openSettings(u"About"_s);
        ASSERT_TRUE(eventually(isOver, 40'000));
    }

    /// The address that the engine was started at.
    QString enginePlace() const {
        QFile file(u"/proc/%1/cmdline"_s.arg(program.enginePid()));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArrayList arguments = file.readAll().split('\0');
        return u"127.0.0.1:"_s + QString::fromLatin1(arguments.value(arguments.indexOf("--port") + 1));
    }

    static QString placeOf(const ScriptedEngine &server) { return server.url().authority(); }

    QString engine;           ///< its address
    QElapsedTimer sinceReady; ///< since the chat was
    ScriptedEngine catalog;
    ScriptedEngine versions;
    ScriptedEngine searchPage;
    EnvironmentVariable catalogAddress{"OSTRELIN_CATALOGURL", catalog.url().toEncoded() + "/catalog.json"};
    EnvironmentVariable versionAddress{"OSTRELIN_VERSIONURL", versions.url().toEncoded() + "/version.json"};
    EnvironmentVariable searchAddress{"OSTRELIN_SEARCHURL", searchPage.url().toEncoded() + "/html/"};
};

/// The settings file of a person who has changed everything, with this value at that key.
QByteArray settingsWith(const QString &key, const QJsonValue &value) {
    Settings settings;
    settings.searchMode = SearchMode::always;
    settings.responseSpeed = ResponseSpeed::calm;
    settings.memoryEnabled = false;
    settings.didFinishWelcome = true;
    settings.theme = Theme::pink;
    settings.schedulesEnabled = true;
    settings.textSize = TextSize::small;
    settings.typeFace = TypeFace::serif;
    QJsonObject object = encode(settings).toObject();
    object.insert(key, value);
    return QJsonDocument(object).toJson();
}

} // namespace

TEST_F(WindowSettings, eachChoiceSurvivesARestart) {
    // Nothing in the window shows this one.
    Settings settings = loadSettings();
    settings.schedulesEnabled = true;
    saveSettings(settings);
    startProgram();
    ASSERT_TRUE(window().press(u"Response speed"_s));
    openSettings(u"Appearance"_s);
    choose(u"Pink"_s);
    choose(u"Extra large"_s);
    choose(u"Serif"_s);
    openSettings(u"Web search"_s);
    choose(u"Ask each time"_s);
    openSettings(u"Memory"_s);
    ASSERT_TRUE(window().setText(u"Memory"_s, u"- Likes tea"_s));
    EXPECT_TRUE(eventually([] { return readMemory() == u"- Likes tea"_s; }));
    ASSERT_TRUE(window().press(u"Remember things"_s, AccessibleRole::checkBox));
    EXPECT_TRUE(window().waitUntilGone(u"Memory"_s, AccessibleRole::text));
    endProgram();

    startProgram();
    openSettings(u"Appearance"_s);
    for (const QString &word : {u"Pink"_s, u"Extra large"_s, u"Serif"_s})
        EXPECT_TRUE(isChosen(word)) << word.toStdString();
    openSettings(u"Web search"_s);
    EXPECT_TRUE(isChosen(u"Ask each time"_s));
    openSettings(u"Memory"_s);
    ASSERT_TRUE(window().waitFor(u"Remember things"_s, AccessibleRole::checkBox));
    EXPECT_FALSE(window().isChosen(u"Remember things"_s, AccessibleRole::checkBox));
    EXPECT_FALSE(window().shows(u"Memory"_s, AccessibleRole::text));
    ASSERT_TRUE(window().press(u"Remember things"_s, AccessibleRole::checkBox));
    ASSERT_TRUE(window().waitFor(u"Memory"_s, AccessibleRole::text));
    EXPECT_EQ(window().text(u"Memory"_s), u"- Likes tea"_s);
    EXPECT_EQ(loadSettings().responseSpeed, ResponseSpeed::calm);
    ASSERT_TRUE(window().press(u"Response speed"_s));
    EXPECT_TRUE(eventually([] { return loadSettings().responseSpeed == ResponseSpeed::slowYourRoll; }))
        << "it went on from where it was";
    EXPECT_TRUE(loadSettings().schedulesEnabled);
}

TEST_F(WindowSettings, whatWasTurnedDownIsNotOfferedAfterARestart) {
    offerUpgrade();
    startProgram();
    ASSERT_TRUE(window().waitFor(u"Your Mac can run a smarter version of Ostrelin. Download (5 MB)?"_s,
                                 AccessibleRole::label));
    ASSERT_TRUE(window().press(u"Not now"_s));
    ASSERT_TRUE(window().waitUntilGone(u"Not now"_s, AccessibleRole::pushButton));
    openSettings(u"Web search"_s);
    choose(u"Always allow"_s);
    findUpdate();
    ASSERT_TRUE(window().waitFor(u"Not now"_s, AccessibleRole::pushButton));
    ASSERT_TRUE(window().press(u"Not now"_s));
    ASSERT_TRUE(window().waitUntilGone(u"Not now"_s, AccessibleRole::pushButton));
    EXPECT_EQ(loadSettings().dismissedUpgradeTierId, u"better"_s);
    EXPECT_EQ(loadSettings().dismissedUpdateVersion, u"99.1"_s);
    endProgram();

    offerUpgrade();
    startProgram();
    findUpdate();
    EXPECT_FALSE(window().shows(u"Not now"_s, AccessibleRole::pushButton));
}

TEST_F(WindowSettings, whatAnotherProgramWritesIntoTheMemoryIsKept) {
    startProgram();
    openSettings(u"Memory"_s);
    ASSERT_TRUE(window().waitFor(u"Memory"_s, AccessibleRole::text));
    const auto isAtKeyboard = [this] { return window().hasFocus(u"Message Ostrelin"_s); };
    ASSERT_TRUE(focusTopLevelWindow(program.pid()));
    ASSERT_TRUE(eventually(isAtKeyboard));
    ASSERT_TRUE(focusNoWindow());
    ASSERT_TRUE(eventually([&] { return !isAtKeyboard(); }));
    EXPECT_TRUE(writeMemory(u"- Likes tea"_s));
    EXPECT_EQ(window().text(u"Memory"_s), QString());
    ASSERT_TRUE(focusTopLevelWindow(program.pid()));
    EXPECT_TRUE(eventually([this] { return window().text(u"Memory"_s) == u"- Likes tea"_s; }));
}

TEST_F(WindowSettings, oneDamagedKeyMakesAllOfThemTheDefaults) {
    const QStringList keys =
        encode(Settings()).toObject().keys() +
        QStringList{u"installed"_s, u"dismissedUpgradeTierId"_s, u"dismissedUpdateVersion"_s};
    ASSERT_EQ(keys.size(), 11);
    for (const QString &key : keys) {
        writeAtomically(settingsFile(), settingsWith(key, QJsonArray{42}));
        ASSERT_TRUE(program.start());
        EXPECT_TRUE(window().waitFor(u"Get started"_s, AccessibleRole::pushButton)) << key.toStdString();
        endProgram();
        EXPECT_EQ(loadSettings(), Settings()) << key.toStdString();
    }
}

TEST_F(WindowSettings, withWebSearchOffItConnectsToNothingButItsEngine) {
    ASSERT_EQ(loadSettings().searchMode, SearchMode::off);
    const ConnectionRecord record;
    // The first question for updates would come after twenty seconds.
    useProgramUntil([this] { return sinceReady.elapsed() > 23'000; });
    EXPECT_TRUE(window().shows(u"Update checks are off while Offline Mode is on."_s, AccessibleRole::label));
    endProgram();
    // The list of models is asked for at each start.
    EXPECT_EQ(record.destinations(), (QStringList{placeOf(catalog), engine}));
    EXPECT_TRUE(versions.requests().isEmpty());
    EXPECT_TRUE(searchPage.requests().isEmpty());
}

TEST_F(WindowSettings, withWebSearchOnTheSameUseIsSeenToAskForUpdates) {
    Settings settings = loadSettings();
    settings.searchMode = SearchMode::always;
    saveSettings(settings);
    const ConnectionRecord record;
    useProgramUntil([this] { return !versions.requests().isEmpty(); });
    endProgram();
    EXPECT_TRUE(record.destinations().contains(placeOf(versions)));
    EXPECT_EQ(record.destinations().contains(placeOf(searchPage)), !searchPage.requests().isEmpty());
}
