#include "screens/AboutForm.h"
#include "screens/AppFixture.h"
#include "screens/Browser.h"
#include "screens/TextView.h"

using namespace Qt::StringLiterals;

namespace {

constexpr char commit[] = "0123456789abcdef0123456789abcdef01234567";

AboutState known() {
    return {.program = {u"0.1.0"_s, 1}, .engineBuild = QString::fromLatin1(commit)};
}

UpdateStatus available(const std::optional<QUrl> &address = std::nullopt) {
    return {UpdateStatus::State::available, {.version = u"0.2.0"_s, .downloadURL = address}};
}

class AboutFormTest : public AppFixture {
protected:
    AboutFormTest() : form((start(), app), look) {
        form.resize(596, 560);
        present(form);
    }

    void tellOf(const QByteArray &release) { tell(Script(200).raw(release)); }

    void tell(const Script &answer) {
        network.answerEach([answer](const ScriptedEngine::Request &) { return answer; });
        click(buttonNamed(form, u"Check for updates"_s));
    }

    bool reads(const QString &text) const {
        const auto views = form.findChildren<TextView *>();
        return std::any_of(views.begin(), views.end(),
                           [&](const TextView *view) { return view->isVisible() && view->text() == text; });
    }

    TextView *engineLine() const {
        const auto views = form.findChildren<TextView *>();
        const auto found = std::find_if(views.begin(), views.end(), [](const TextView *view) {
            return view->text().startsWith(u"llama.cpp "_s);
        });
        return found == views.end() ? nullptr : *found;
    }

    StillLook look;
    AboutForm form;
};

const QString offline = u"Update checks are off while Offline Mode is on."_s;

} // namespace

TEST(AboutFormModelTest, versionAndEngineAreTold) {
    const AboutFormModel model = aboutFormModel(known());
    EXPECT_EQ(model.version, u"0.1.0 (1)"_s);
    EXPECT_EQ(model.engine, u"llama.cpp "_s + QString::fromLatin1(commit));
}

TEST(AboutFormModelTest, theInstalledModelComesBeforeTheOneInUse) {
    AboutState state = known();
    EXPECT_EQ(aboutFormModel(state).poweredBy, u"Powered by  via llama.cpp"_s);
    EXPECT_EQ(aboutFormModel(state).licences, u"Models: Apache-2.0. llama.cpp is MIT."_s);
    state.activeTier = ModelTier{.displayName = u"Used"_s, .license = u"GPL"_s};
    EXPECT_EQ(aboutFormModel(state).poweredBy, u"Powered by Used via llama.cpp"_s);
    EXPECT_EQ(aboutFormModel(state).licences, u"Models: GPL. llama.cpp is MIT."_s);
    state.settings.installed = InstalledModel{.displayName = u"Installed"_s, .license = u"MIT"_s};
    EXPECT_EQ(aboutFormModel(state).poweredBy, u"Powered by Installed via llama.cpp"_s);
    EXPECT_EQ(aboutFormModel(state).licences, u"Models: MIT. llama.cpp is MIT."_s);
}

TEST(AboutFormModelTest, howTheCheckStandsIsToldInItsWords) {
    AboutState state = known();
    state.settings.searchMode = SearchMode::ask;
    const std::pair<UpdateStatus, QString> words[] = {
        {{UpdateStatus::State::idle, {}}, QString()},
        {{UpdateStatus::State::checking, {}}, u"Checking…"_s},
        {{UpdateStatus::State::failed, {}}, u"Couldn't check for updates."_s},
        {{UpdateStatus::State::upToDate, {}}, u"Up to date."_s},
        {available(), u"Ostrelin 0.2.0 is available."_s}};
    for (const auto &[status, word] : words) {
        state.updates = status;
        EXPECT_TRUE(aboutFormModel(state).canCheck);
        EXPECT_EQ(aboutFormModel(state).updates, word);
        EXPECT_TRUE(aboutFormModel(state).downloading.isEmpty());
    }
}

TEST(AboutFormModelTest, aKnownAddressIsOffered) {
    AboutState state = known();
    state.settings.searchMode = SearchMode::always;
    state.updates = available(QUrl(u"https://ostrelin.example/"_s));
    EXPECT_EQ(aboutFormModel(state).downloading, u"Download 0.2.0"_s);
    EXPECT_EQ(aboutFormModel(state).downloadURL, QUrl(u"https://ostrelin.example/"_s));
}

TEST(AboutFormModelTest, offlineNothingIsToldOfUpdates) {
    AboutState state = known();
    state.updates = available(QUrl(u"https://ostrelin.example/"_s));
    const AboutFormModel model = aboutFormModel(state);
    EXPECT_FALSE(model.canCheck);
    EXPECT_TRUE(model.updates.isEmpty());
    EXPECT_TRUE(model.downloading.isEmpty());
}

TEST_F(AboutFormTest, whileOfflineThereIsOnlyTheReason) {
    EXPECT_TRUE(reads(offline));
    EXPECT_FALSE(buttonNamed(form, u"Check for updates"_s));
    EXPECT_TRUE(reads(u"Powered by House via llama.cpp"_s));
    app.changeSetting(&Settings::searchMode, SearchMode::ask);
    EXPECT_FALSE(reads(offline));
    EXPECT_TRUE(buttonNamed(form, u"Check for updates"_s));
}

TEST_F(AboutFormTest, itTellsOfProgramModelAndEngine) {
    const ProgramVersion program = programVersion();
    EXPECT_TRUE(reads(u"%1 (%2)"_s.arg(program.version).arg(program.build)));
    EXPECT_TRUE(reads(u"Models: MIT. llama.cpp is MIT."_s));
    EXPECT_TRUE(engineLine());
}

TEST_F(AboutFormTest, theEngineIsCopiedByKeysAndMouse) {
    TextView *line = engineLine();
    ASSERT_TRUE(line);
    EXPECT_LT(line->height(), QFontMetrics(look.font(TextStyle::body)).lineSpacing());
    EXPECT_TRUE(line->focusPolicy() & Qt::TabFocus);
    line->setFocus(Qt::TabFocusReason);
    QTest::keyClick(line, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(line->selectedText(), line->text());
}

TEST_F(AboutFormTest, aCheckUnderWaySaysSo) {
    app.changeSetting(&Settings::searchMode, SearchMode::ask);
    click(buttonNamed(form, u"Check for updates"_s));
    EXPECT_TRUE(reads(u"Checking…"_s));
}

TEST_F(AboutFormTest, aScreenReaderHearsOfTheCheckWhereTheFocusIs) {
    app.changeSetting(&Settings::searchMode, SearchMode::ask);
    tell(Script(200).hold().raw(R"({"version": "0.0.1"})"));
    const auto description = [this] {
        QPushButton *check = buttonNamed(form, u"Check for updates"_s);
        return QAccessible::queryAccessibleInterface(check)->text(QAccessible::Description);
    };
    EXPECT_EQ(description(), u"Checking…"_s);
    EXPECT_TRUE(eventually([&] {
        network.goOn();
        return description() == u"Up to date."_s;
    }));
}

TEST_F(AboutFormTest, anUpdateIsFoundAndItsAddressOpened) {
    const Browser browser;
    app.changeSetting(&Settings::searchMode, SearchMode::ask);
    tellOf(R"({"version": "99.1", "downloadURL": "https://ostrelin.example/get"})");
    ASSERT_TRUE(eventually([this] { return reads(u"Ostrelin 99.1 is available."_s); }));
    EXPECT_EQ(form.focusWidget(), buttonNamed(form, u"Check for updates"_s)) << "the keyboard stays";
    click(buttonNamed(form, u"Download 99.1"_s));
    EXPECT_EQ(browser.opened, QList{QUrl(u"https://ostrelin.example/get"_s)});
    app.changeSetting(&Settings::searchMode, SearchMode::off);
    EXPECT_TRUE(reads(offline)) << "at once";
    EXPECT_FALSE(buttonNamed(form, u"Download 99.1"_s));
    app.changeSetting(&Settings::searchMode, SearchMode::ask);
    EXPECT_FALSE(reads(u"Ostrelin 99.1 is available."_s)) << "it is forgotten";
}

TEST_F(AboutFormTest, aCheckThatFailsSaysSo) {
    app.changeSetting(&Settings::searchMode, SearchMode::always);
    tellOf("<html>");
    EXPECT_TRUE(eventually([this] { return reads(u"Couldn't check for updates."_s); }));
    tellOf(R"({"version": "0.0.1"})");
    EXPECT_TRUE(eventually([this] { return reads(u"Up to date."_s); }));
}
