#include "core/AppStateFixture.h"
#include "records/Settings.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// A ready chat, and a release that is newer than any.
class AppStateUpdate : public AppStateFixture {
protected:
    AppStateUpdate() {
        versions.answer(Script(200).raw(R"({"version": "99.1"})"));
        hasModel(tier(u"tiny"_s, "model"));
        serveCatalog({tier(u"tiny"_s, "model")});
    }

    void start(SearchMode mode) {
        Settings settings = loadSettings();
        settings.searchMode = mode;
        saveSettings(settings);
        app->bootstrap();
        ASSERT_TRUE(reaches<phase::Ready>());
    }

    void setMode(SearchMode mode) {
        Settings settings = app->settings();
        settings.searchMode = mode;
        app->saveSettings(settings);
    }

    bool hasUpdate() {
        return eventually([this] { return app->availableUpdate().has_value(); });
    }
};

} // namespace

TEST_F(AppStateUpdate, withTheReadyChatTheChecksBegin) {
    start(SearchMode::ask);
    EXPECT_TRUE(versions.requests().isEmpty());
    clock.advance(20s);
    ASSERT_TRUE(hasUpdate());
    EXPECT_EQ(app->availableUpdate()->version, u"99.1"_s);
}

TEST_F(AppStateUpdate, anEngineThatIsReadyAgainBeginsThemAnew) {
    start(SearchMode::ask);
    clock.advance(15s);
    ASSERT_TRUE(restartsEngine());
    clock.advance(15s);
    letPass(50);
    EXPECT_TRUE(versions.requests().isEmpty());
    clock.advance(5s);
    EXPECT_TRUE(hasUpdate());
}

TEST_F(AppStateUpdate, withWebSearchOffNothingIsAsked) {
    start(SearchMode::off);
    clock.advance(20s);
    clock.advance(24h);
    app->updates().check();
    letPass(100);
    EXPECT_TRUE(versions.requests().isEmpty());
    EXPECT_EQ(app->updates().status().state, UpdateStatus::State::idle);
}

TEST_F(AppStateUpdate, turningWebSearchOffClearsAnUpdate) {
    start(SearchMode::always);
    app->updates().check();
    ASSERT_TRUE(hasUpdate());
    setMode(SearchMode::ask);
    EXPECT_TRUE(app->availableUpdate());
    setMode(SearchMode::off);
    EXPECT_FALSE(app->availableUpdate());
    EXPECT_EQ(app->updates().status().state, UpdateStatus::State::idle);
}

TEST_F(AppStateUpdate, aDismissedVersionIsNotToldOfAgainAndALaterOneIs) {
    start(SearchMode::always);
    app->updates().check();
    ASSERT_TRUE(hasUpdate());
    app->dismissUpdate();
    EXPECT_FALSE(app->availableUpdate());
    EXPECT_TRUE(app->updates().availableInfo()) << "whoever asks for it is still told";
    EXPECT_EQ(loadSettings().dismissedUpdateVersion, u"99.1"_s);
    versions.answer(Script(200).raw(R"({"version": "99.2"})"));
    app->updates().check();
    ASSERT_TRUE(hasUpdate());
    EXPECT_EQ(app->availableUpdate()->version, u"99.2"_s);
}

TEST_F(AppStateUpdate, thereIsNothingToDismissWithoutAnUpdate) {
    start(SearchMode::always);
    app->dismissUpdate();
    EXPECT_FALSE(app->settings().dismissedUpdateVersion);
}

TEST_F(AppStateUpdate, afterEverythingWasDeletedNothingIsAsked) {
    start(SearchMode::always);
    versions.forgetAnswers();
    versions.answer(Script(200).hold());
    app->updates().check();
    ASSERT_TRUE(eventually([this] { return versions.openConnections() == 1; }));
    app->deleteEverything();
    EXPECT_TRUE(eventually([this] { return versions.openConnections() == 0; }));
    clock.advance(24h);
    letPass(100);
    EXPECT_EQ(versions.requests().size(), 1);
}

TEST_F(AppStateUpdate, theEndOfTheProgramEndsACheck) {
    start(SearchMode::always);
    versions.forgetAnswers();
    versions.answer(Script(200).hold());
    app->updates().check();
    ASSERT_TRUE(eventually([this] { return versions.openConnections() == 1; }));
    app->shutDown();
    EXPECT_TRUE(eventually([this] { return versions.openConnections() == 0; }));
}
