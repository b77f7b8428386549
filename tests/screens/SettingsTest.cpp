#include "records/Memory.h"
#include "screens/AppFixture.h"
#include "screens/CheckToggle.h"
#include "screens/Label.h"
#include "screens/ModelFormModel.h"
#include "screens/PaneList.h"
#include "screens/SettingsView.h"
#include "screens/Sheet.h"
#include "screens/TextEditor.h"
#include "screens/TextView.h"
#include "screens/ThemePicker.h"
#include "screens/ThemeSwatch.h"
#include "support/DiskRecord.h"
#include "support/FileManagerService.h"
#include "support/PrivateBus.h"

#include <QDir>
#include <QInputMethodEvent>
#include <QSignalSpy>
#include <QStackedLayout>

using namespace Qt::StringLiterals;

namespace {

class SettingsViewTest : public AppFixture {
protected:
    SettingsViewTest() : view((start(), app), look) { present(view); }

    void choose(SettingsPane pane) {
        list()->setPane(pane);
        QCoreApplication::processEvents();
    }

    /// Everything that is to be read in the chosen pane, in no order.
    QStringList texts() const {
        QStringList all;
        for (const Label *label : view.findChildren<Label *>()) {
            if (label->isVisible())
                all.append(label->text());
        }
        for (const TextView *text : view.findChildren<TextView *>()) {
            if (text->isVisible())
                all.append(text->text());
        }
        return all;
    }
    bool reads(const QString &text) const { return texts().contains(text); }

    PaneList *list() const { return view.findChild<PaneList *>(); }
    TextEditor *editor() const { return view.findChild<TextEditor *>(); }
    Sheet *sheet() const { return view.findChild<Sheet *>(); }
    QPushButton *button(const QString &word) const { return buttonNamed(view, word); }

    /// Where Tab is to stop in the chosen pane: the list, each button, of several to choose from the chosen
    /// one, and what is written in.
    QSet<QWidget *> stops() const {
        QSet<QWidget *> all{list()};
        for (QPushButton *each : view.findChildren<QPushButton *>()) {
            if (each->isVisible() && (!each->autoExclusive() || each->isChecked()))
                all.insert(each);
        }
        if (editor()->isVisible())
            all.insert(editor());
        return all;
    }

    /// Where that key stops on its way from the list and back to it.
    QSet<QWidget *> walked(Qt::Key key) {
        QSet<QWidget *> all;
        list()->setFocus();
        do {
            all.insert(view.focusWidget());
            QTest::keyClick(view.focusWidget(), key);
        } while (!all.contains(view.focusWidget()));
        return all;
    }

    StillLook look;
    SettingsView view;
};

const QString eraseWords = u"Delete all my data related to Ostrelin (including my downloaded LLMs)"_s;

} // namespace

TEST_F(SettingsViewTest, itOpensOnTheFirstPane) {
    EXPECT_EQ(view.size(), QSize(780, 560));
    EXPECT_EQ(list()->pane(), SettingsPane::appearance);
    QStringList names;
    for (int row = 0; row < list()->count(); ++row)
        names.append(list()->item(row)->text());
    EXPECT_EQ(names, (QStringList{u"Appearance"_s, u"Memory"_s, u"Web search"_s, u"Scheduled runs"_s,
                                  u"Model"_s, u"Data"_s, u"About"_s}));
    EXPECT_TRUE(reads(u"Appearance"_s));
    EXPECT_TRUE(reads(u"Text"_s));
    EXPECT_FALSE(reads(u"Storage"_s));
}

TEST_F(SettingsViewTest, theListIsWalkedByKeysAndReadAloud) {
    list()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(list(), Qt::Key_Down);
    EXPECT_EQ(list()->pane(), SettingsPane::memory);
    EXPECT_TRUE(reads(u"Remember things"_s));
    EXPECT_EQ(spokenRole(list()), QAccessible::List);
    QTest::keyClick(list(), Qt::Key_End);
    EXPECT_EQ(list()->pane(), SettingsPane::about);
}

TEST_F(SettingsViewTest, aScreenReaderChoosesAPaneToo) {
    QAccessibleInterface *const data =
        QAccessible::queryAccessibleInterface(list())->child(int(SettingsPane::data));
    const auto toggle = [&] {
        data->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    };
    toggle();
    EXPECT_EQ(list()->pane(), SettingsPane::data);
    EXPECT_TRUE(button(eraseWords));
    toggle();
    EXPECT_EQ(list()->selectedItems(), QList{list()->item(int(SettingsPane::data))})
        << "there is always a chosen pane";
}

TEST_F(SettingsViewTest, eachPaneHasItsSymbol) {
    QList<Icon> symbols;
    for (const SettingsPane pane : settingsPanes)
        symbols.append(iconOf(pane));
    EXPECT_EQ(symbols, (QList{Icon::palette, Icon::sparkles, Icon::magnifier, Icon::clock, Icon::chip,
                              Icon::trash, Icon::information}));
}

TEST_F(SettingsViewTest, theListHasItsWidth) {
    const QImage picture = view.grab().toImage();
    const int low = picture.height() - 1;
    EXPECT_EQ(picture.pixel(182, low), look.palette().sidebar.rgb());
    EXPECT_NE(picture.pixel(184, low), look.palette().sidebar.rgb());
    for (const SettingsPane pane : settingsPanes) {
        choose(pane);
        EXPECT_EQ(view.findChild<QStackedLayout *>()->currentWidget()->geometry(), QRect(184, 0, 596, 560));
    }
}

TEST_F(SettingsViewTest, theSixThemesStandInTheirOrder) {
    const auto swatches = view.findChildren<ThemeSwatch *>();
    QStringList names;
    for (ThemeSwatch *swatch : swatches) {
        names.append(spokenName(swatch));
        EXPECT_EQ(spokenRole(swatch), QAccessible::RadioButton);
        EXPECT_EQ(swatch->swatch().size(), QSizeF(28, 20));
    }
    EXPECT_EQ(names, (QStringList{u"Light blue"_s, u"Pink"_s, u"Crisp white"_s, u"Gray"_s, u"Near black"_s,
                                  u"Soft green"_s}));
    EXPECT_TRUE(
        std::is_sorted(swatches.begin(), swatches.end(),
                       [](const QWidget *one, const QWidget *other) { return one->x() < other->x(); }));
    EXPECT_TRUE(button(u"Gray"_s)->isChecked());
    EXPECT_EQ(spokenName(view.findChild<ThemePicker *>()), u"Theme"_s);
}

TEST_F(SettingsViewTest, aSwatchIsDrawnInItsThemesColors) {
    for (const Theme theme : themes) {
        ThemeSwatch *swatch = view.findChild<ThemePicker *>()->swatch(theme);
        const QImage image = swatch->grab().toImage();
        const QPoint centre = swatch->swatch().center().toPoint();
        EXPECT_EQ(image.pixel(centre), paletteOf(theme).accent.rgb());
        const QPoint corner = swatch->swatch().topLeft().toPoint();
        for (const QPoint &way : {QPoint(1, 0), QPoint(0, 1)}) {
            EXPECT_EQ(image.pixel(centre + way), paletteOf(theme).accent.rgb()) << "a dot of six";
            EXPECT_EQ(image.pixel(centre + 3 * way), paletteOf(theme).swatch.rgb());
        }
        EXPECT_EQ(image.pixel(corner + QPoint(2, 2)), paletteOf(theme).swatch.rgb());
        EXPECT_EQ(image.pixel(corner), image.pixel(corner - QPoint(1, 1))) << "a round corner";
        const bool hasOutline =
            image.pixel(centre.x(), int(swatch->swatch().top()) - 4) == paletteOf(theme).accent.rgb();
        EXPECT_EQ(hasOutline, theme == Theme::gray);
    }
}

TEST_F(SettingsViewTest, aClickOnASwatchSetsTheThemeAndSaves) {
    click(button(u"Soft green"_s));
    EXPECT_EQ(app.settings().theme, Theme::softGreen);
    EXPECT_EQ(loadSettings().theme, Theme::softGreen);
    EXPECT_TRUE(button(u"Soft green"_s)->isChecked());
    EXPECT_FALSE(button(u"Gray"_s)->isChecked());
}

TEST_F(SettingsViewTest, theArrowKeysGoFromThemeToTheme) {
    QPushButton *gray = button(u"Gray"_s);
    gray->setFocus(Qt::TabFocusReason);
    QTest::keyClick(gray, Qt::Key_Right);
    EXPECT_EQ(app.settings().theme, Theme::nearBlack);
    EXPECT_TRUE(button(u"Near black"_s)->hasFocus());
    // One stop for Tab, whichever is chosen.
    QTest::keyClick(view.focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(spokenName(view.focusWidget()), u"Large"_s);
}

TEST_F(SettingsViewTest, sizeAndTypefaceAreChosenByTheirNames) {
    for (const TextSize size : textSizes) {
        click(button(displayName(size)));
        EXPECT_EQ(loadSettings().textSize, size);
    }
    for (const TypeFace face : {TypeFace::serif, TypeFace::sans}) {
        click(button(displayName(face)));
        EXPECT_EQ(loadSettings().typeFace, face);
    }
    EXPECT_TRUE(reads(u"Text size"_s));
    EXPECT_TRUE(reads(u"Typeface"_s));
}

TEST_F(SettingsViewTest, aScreenReaderChoosesAThemeAndASize) {
    const auto choose = [this](const QString &name) {
        QAccessible::queryAccessibleInterface(button(name))
            ->actionInterface()
            ->doAction(QAccessibleActionInterface::toggleAction());
    };
    choose(u"Pink"_s);
    EXPECT_EQ(loadSettings().theme, Theme::pink);
    choose(u"Small"_s);
    EXPECT_EQ(loadSettings().textSize, TextSize::small);
    choose(u"Small"_s);
    EXPECT_TRUE(button(u"Small"_s)->isChecked()) << "one is always chosen";
}

TEST_F(SettingsViewTest, aChangeFromElsewhereShows) {
    Settings settings = app.settings();
    settings.theme = Theme::pink;
    settings.textSize = TextSize::small;
    app.saveSettings(settings);
    EXPECT_TRUE(button(u"Pink"_s)->isChecked());
    EXPECT_TRUE(button(u"Small"_s)->isChecked());
}

TEST_F(SettingsViewTest, theMemoryFileFollowsEveryKeystroke) {
    choose(SettingsPane::memory);
    EXPECT_TRUE(reads(u"Ostrelin adds this to every chat. Edit it here or ask Ostrelin to update it."_s));
    QString typed;
    for (const QChar key : u"- likes tea"_s) {
        QTest::keyClick(editor(), key.toLatin1());
        typed += key;
        EXPECT_EQ(readMemory(), typed);
        EXPECT_EQ(app.memory(), typed);
    }
    QTest::keyClick(editor(), Qt::Key_Return);
    QTest::keyClick(editor(), Qt::Key_Backspace);
    QTest::keyClick(editor(), Qt::Key_Backspace);
    EXPECT_EQ(readMemory(), u"- likes te"_s);
}

TEST_F(SettingsViewTest, theDiskHasTheMemoryOnceItsFieldIsLeft) {
    choose(SettingsPane::memory);
    const DiskRecord record;
    const auto flushes = [] { return DiskRecord::orders().count("flush " + memoryFile().toUtf8()); };
    editor()->setFocus();
    QTest::keyClicks(editor(), u"- likes tea"_s);
    EXPECT_EQ(flushes(), 0);
    list()->setFocus();
    EXPECT_EQ(flushes(), 1);
    editor()->setFocus();
    QTest::keyClicks(editor(), u"!"_s);
    choose(SettingsPane::model);
    EXPECT_EQ(flushes(), 2);
}

TEST_F(SettingsViewTest, theRingOfTheListOutlastsAMenu) {
    list()->clearFocus();
    list()->setFocus(Qt::TabFocusReason);
    ASSERT_TRUE(list()->showsFocus());
    for (const auto reason : {Qt::PopupFocusReason, Qt::MenuBarFocusReason, Qt::ActiveWindowFocusReason}) {
        QFocusEvent back(QEvent::FocusIn, reason);
        QCoreApplication::sendEvent(list(), &back);
        EXPECT_TRUE(list()->showsFocus());
    }
    QFocusEvent pressed(QEvent::FocusIn, Qt::MouseFocusReason);
    QCoreApplication::sendEvent(list(), &pressed);
    EXPECT_FALSE(list()->showsFocus());
}

TEST_F(SettingsViewTest, whatIsPastedIntoTheMemoryIsKeptAsItIs) {
    choose(SettingsPane::memory);
    const QString text = u"- Grüße\n\n- 世界\u00a0👋\n"_s;
    editor()->insertPlainText(text);
    EXPECT_EQ(readMemory(), text);
}

TEST_F(SettingsViewTest, theEditorShowsTheFileAndDoesNotTouchIt) {
    writeMemory(u"- a line\r\n- another\r\n"_s);
    app.saveMemory(readMemory());
    choose(SettingsPane::memory);
    EXPECT_EQ(editor()->writtenText(), u"- a line\n- another\n"_s);
    EXPECT_EQ(readMemory(), u"- a line\r\n- another\r\n"_s);
}

TEST_F(SettingsViewTest, aFactThatIsRememberedMeanwhileStandsBesideWhatIsTyped) {
    choose(SettingsPane::memory);
    editor()->setFocus();
    QTest::keyClicks(editor(), u"- one- two"_s);
    QTextCursor cursor = editor()->textCursor();
    cursor.setPosition(5);
    editor()->setTextCursor(cursor);
    app.rememberFact(u"likes tea"_s);
    EXPECT_EQ(editor()->writtenText(), u"- one- two\n- likes tea"_s);
    EXPECT_EQ(editor()->textCursor().position(), 5) << "the person writes on where they were";
    QTest::keyClicks(editor(), u"!"_s);
    EXPECT_EQ(readMemory(), u"- one!- two\n- likes tea"_s);
}

TEST_F(SettingsViewTest, whatCannotBeWrittenIsKeptUntilItCan) {
    choose(SettingsPane::memory);
    QTest::keyClicks(editor(), u"tea"_s);
    // Nothing can take the file's place.
    QFile::remove(memoryFile());
    ASSERT_TRUE(QDir().mkpath(memoryFile() + u"/full"_s));
    QTest::keyClicks(editor(), u" and"_s);
    app.rememberFact(u"likes milk"_s);
    EXPECT_EQ(editor()->writtenText(), u"tea and\n- likes milk"_s);
    ASSERT_TRUE(QDir(memoryFile()).removeRecursively());
    app.shutDown();
    EXPECT_EQ(readMemory(), u"tea and\n- likes milk"_s);
}

TEST_F(SettingsViewTest, whatIsBeingComposedIsKeptWhenTheWindowCloses) {
    choose(SettingsPane::memory);
    editor()->setFocus();
    QInputMethodEvent composing(u"日本"_s, {});
    QCoreApplication::sendEvent(editor(), &composing);
    EXPECT_EQ(readMemory(), QString());
    view.close();
    EXPECT_EQ(readMemory(), u"日本"_s);
}

TEST_F(SettingsViewTest, clearingTheMemoryLeavesAnEmptyFileAndCanBeUndone) {
    choose(SettingsPane::memory);
    QTest::keyClicks(editor(), u"- likes tea"_s);
    click(button(u"Clear"_s));
    EXPECT_EQ(editor()->writtenText(), QString());
    EXPECT_TRUE(QFile::exists(memoryFile()));
    EXPECT_EQ(QFile(memoryFile()).size(), 0);
    QTest::keyClick(editor(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(readMemory(), u"- likes tea"_s);
}

TEST_F(SettingsViewTest, theMemoryFileIsShownInTheFileManager) {
    const PrivateBus bus;
    const EnvironmentVariable session("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
    const FileManagerService manager(bus.address());
    choose(SettingsPane::memory);
    click(button(u"Reveal in Finder"_s));
    ASSERT_TRUE(eventually([&] { return !manager.shown().isEmpty(); }));
    EXPECT_EQ(manager.shown(), QList<QStringList>{{QUrl::fromLocalFile(memoryFile()).toString()}});
}

TEST_F(SettingsViewTest, theEditorIsThereWhileThingsAreRemembered) {
    choose(SettingsPane::memory);
    CheckToggle *toggle = view.findChild<CheckToggle *>();
    EXPECT_EQ(spokenName(toggle), u"Remember things"_s);
    EXPECT_TRUE(toggle->isChecked());
    EXPECT_TRUE(button(u"Reveal in Finder"_s));
    click(toggle);
    EXPECT_FALSE(loadSettings().memoryEnabled);
    EXPECT_FALSE(editor()->isVisible());
    EXPECT_FALSE(button(u"Clear"_s));
    EXPECT_FALSE(button(u"Reveal in Finder"_s));
    click(toggle);
    EXPECT_TRUE(loadSettings().memoryEnabled);
    EXPECT_TRUE(editor()->isVisible());
}

TEST_F(SettingsViewTest, whenTheWebIsSearchedIsChosenByItsName) {
    choose(SettingsPane::search);
    EXPECT_TRUE(button(u"Off"_s)->isChecked());
    EXPECT_TRUE(reads(
        u"With web search off, your chats stay on this Mac. With web search on, each search query is sent "
        "to DuckDuckGo, and pages Ostrelin opens can see this Mac's IP address."_s));
    const std::pair<QString, SearchMode> choices[] = {{u"Ask each time"_s, SearchMode::ask},
                                                      {u"Always allow"_s, SearchMode::always},
                                                      {u"Off"_s, SearchMode::off}};
    for (const auto &[word, mode] : choices) {
        click(button(word));
        EXPECT_EQ(loadSettings().searchMode, mode);
    }
    app.changeSetting(&Settings::searchMode, SearchMode::always);
    EXPECT_TRUE(button(u"Always allow"_s)->isChecked()) << "also from elsewhere";
}

TEST_F(SettingsViewTest, aModelThatCannotSearchIsToldOfInstead) {
    choose(SettingsPane::search);
    ModelTier small = tent;
    small.supportsTools = false;
    app.beginDownload(small);
    EXPECT_TRUE(reads(u"Web search needs a larger model."_s));
    EXPECT_FALSE(button(u"Ask each time"_s));
    app.deleteEverything();
    EXPECT_FALSE(app.activeTier());
    EXPECT_FALSE(reads(u"Web search needs a larger model."_s)) << "without a model nothing stands against it";
    EXPECT_TRUE(button(u"Ask each time"_s));
}

TEST_F(SettingsViewTest, theWindowOfScheduledRunsIsAButtonAway) {
    choose(SettingsPane::schedules);
    EXPECT_TRUE(reads(
        u"Run a prompt on a schedule, even while Ostrelin is closed. The result is saved as a chat."_s));
    const QSignalSpy wishes(&view, &SettingsView::schedulesRequested);
    click(button(u"Manage scheduled runs…"_s));
    EXPECT_EQ(wishes.size(), 1);
}

TEST_F(SettingsViewTest, theModelsStorageIsTold) {
    choose(SettingsPane::model);
    for (const QString &text : {u"Storage"_s, u"House"_s, u"Size"_s, u"3.0 GB"_s, u"Location"_s,
                                modelsFolder(), u"Current: House · 3.0 GB"_s, u"Use a smaller model"_s,
                                u"Try a larger model"_s, u"May be slow or unstable on this Mac"_s})
        EXPECT_TRUE(reads(text)) << text.toStdString();
    EXPECT_TRUE(button(u"Reveal in Finder"_s));
}

TEST_F(SettingsViewTest, theModelIsShownInTheFileManager) {
    const PrivateBus bus;
    const EnvironmentVariable session("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
    const FileManagerService manager(bus.address());
    choose(SettingsPane::model);
    click(button(u"Reveal in Finder"_s));
    ASSERT_TRUE(eventually([&] { return !manager.shown().isEmpty(); }));
    const QUrl model = QUrl::fromLocalFile(modelsFolder() + u'/' + house.filename);
    EXPECT_EQ(manager.shown(), QList<QStringList>{{model.toString()}});
}

TEST_F(SettingsViewTest, onlyWhatThereIsIsOffered) {
    choose(SettingsPane::model);
    const auto install = [this](const ModelTier &tier) {
        Settings settings = app.settings();
        settings.installed->tierId = tier.id;
        app.saveSettings(settings);
    };
    install(mansion);
    EXPECT_FALSE(reads(u"Try a larger model"_s));
    EXPECT_FALSE(reads(u"May be slow or unstable on this Mac"_s));
    EXPECT_TRUE(button(u"House"_s));
    EXPECT_TRUE(button(u"Tent"_s));
    install(tent);
    EXPECT_FALSE(reads(u"Use a smaller model"_s));
    EXPECT_TRUE(button(u"Mansion"_s));
    EXPECT_TRUE(button(u"House"_s));
}

TEST_F(SettingsViewTest, withoutAModelThereIsNoneToTellOf) {
    choose(SettingsPane::model);
    Settings settings = app.settings();
    settings.installed.reset();
    app.saveSettings(settings);
    EXPECT_TRUE(reads(u"No model downloaded yet."_s));
    EXPECT_FALSE(reads(u"Location"_s));
    EXPECT_FALSE(button(u"Delete model"_s));
    EXPECT_FALSE(button(u"Tent"_s));
}

TEST_F(SettingsViewTest, aDeletedModelIsChosenAndDownloadedAgain) {
    choose(SettingsPane::model);
    click(button(u"Delete model"_s));
    EXPECT_FALSE(QFile::exists(modelsFolder() + u'/' + house.filename));
    EXPECT_TRUE(reads(u"No model downloaded yet."_s));
    EXPECT_TRUE(reaches<phase::Downloading>());
}

TEST_F(SettingsViewTest, theKeyboardIsSomewhereWhenTheModelIsGone) {
    choose(SettingsPane::model);
    button(u"Delete model"_s)->setFocus(Qt::TabFocusReason);
    QTest::keyClick(view.focusWidget(), Qt::Key_Return);
    ASSERT_TRUE(reads(u"No model downloaded yet."_s));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_TRUE(view.focusWidget());
    EXPECT_TRUE(view.focusWidget()->isVisible());
    EXPECT_EQ(walked(Qt::Key_Tab), stops());
}

TEST_F(SettingsViewTest, anotherModelIsDownloadedWhetherItFitsOrNot) {
    choose(SettingsPane::model);
    click(button(u"Mansion"_s));
    EXPECT_TRUE(isIn<phase::Downloading>(app.phase()));
    EXPECT_EQ(app.pendingTier(), mansion);
    EXPECT_EQ(app.engine().status().state, EngineStatus::State::stopped);
}

TEST_F(SettingsViewTest, nothingIsDeletedBeforeItIsConfirmed) {
    choose(SettingsPane::data);
    click(button(eraseWords));
    EXPECT_TRUE(sheet()->isVisible());
    EXPECT_EQ(spokenName(sheet()), u"Delete everything?"_s);
    EXPECT_EQ(spokenRole(sheet()), QAccessible::Dialog);
    EXPECT_TRUE(reads(u"Your chats, pages, memory, scheduled runs, settings and downloaded models will be "
                      "removed from this Mac. This can't be undone."_s));
    EXPECT_TRUE(button(u"Cancel"_s)->hasFocus());
    click(button(u"Cancel"_s));
    EXPECT_FALSE(sheet()->isVisible());
    EXPECT_TRUE(QFile::exists(modelsFolder() + u'/' + house.filename));
    click(button(eraseWords));
    QTest::keyClick(view.focusWidget(), Qt::Key_Escape);
    EXPECT_FALSE(sheet()->isVisible());
    EXPECT_TRUE(isIn<phase::Ready>(app.phase()));
}

TEST_F(SettingsViewTest, onceItIsConfirmedEverythingIsDeleted) {
    choose(SettingsPane::data);
    click(button(eraseWords));
    QTest::keyClick(view.focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(spokenName(view.focusWidget()), u"Delete everything"_s);
    QTest::keyClick(view.focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(isIn<phase::NeedsInitialization>(app.phase()));
    EXPECT_FALSE(QFile::exists(settingsFile()));
    EXPECT_FALSE(sheet()->isVisible());
}

TEST_F(SettingsViewTest, whatWasDeletedIsNotToBeUndone) {
    choose(SettingsPane::memory);
    QTest::keyClicks(editor(), u"- likes tea"_s);
    choose(SettingsPane::data);
    click(button(eraseWords));
    click(button(u"Delete everything"_s));
    EXPECT_EQ(editor()->writtenText(), QString());
    choose(SettingsPane::memory);
    QTest::keyClick(editor(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(editor()->writtenText(), QString());
    EXPECT_EQ(app.memory(), QString());
}

TEST_F(SettingsViewTest, everyControlHasANameAndAKeyboardWay) {
    app.changeSetting(&Settings::searchMode, SearchMode::ask);
    for (const SettingsPane pane : settingsPanes) {
        choose(pane);
        for (QWidget *stop : stops())
            EXPECT_FALSE(spokenName(stop).isEmpty());
        EXPECT_TRUE(walked(Qt::Key_Tab).contains(stops())) << nameOf(pane).toStdString();
        EXPECT_EQ(walked(Qt::Key_Tab), walked(Qt::Key_Backtab)) << nameOf(pane).toStdString();
    }
}

TEST_F(SettingsViewTest, nothingIsCutOffAtAnySizeOfText) {
    for (const TypeFace face : typeFaces) {
        Settings settings = app.settings();
        settings.textSize = TextSize::extraLarge;
        settings.typeFace = face;
        app.saveSettings(settings);
        look.follow(settings);
        QCoreApplication::processEvents();
        EXPECT_LE(list()->sizeHintForColumn(0), list()->viewport()->width());
        for (const SettingsPane pane : settingsPanes) {
            choose(pane);
            for (const QPushButton *control : view.findChildren<QPushButton *>()) {
                if (!control->isVisible())
                    continue;
                EXPECT_GE(control->width(), control->sizeHint().width()) << control->text().toStdString();
                EXPECT_LE(control->mapTo(&view, control->rect().bottomRight()).x(), view.width());
            }
        }
    }
}

TEST(ModelFormModelTest, theHeaviestHasNoLargerAndTheLightestNoSmaller) {
    ModelTier large;
    large.id = u"large"_s;
    ModelTier small;
    small.id = u"small"_s;
    const Catalog catalog{1, {large, small}};
    Settings settings;
    settings.installed = InstalledModel{.tierId = u"large"_s};
    EXPECT_TRUE(modelFormModel(settings, catalog, {}).larger.isEmpty());
    EXPECT_EQ(modelFormModel(settings, catalog, {}).smaller, QList{small});
    settings.installed->tierId = u"small"_s;
    EXPECT_EQ(modelFormModel(settings, catalog, {}).larger, QList{large});
    EXPECT_TRUE(modelFormModel(settings, catalog, {}).smaller.isEmpty());
}

TEST(ModelFormModelTest, aModelOutsideTheCatalogHasNeither) {
    ModelTier other;
    other.id = u"other"_s;
    Settings settings;
    settings.installed =
        InstalledModel{.tierId = u"gone"_s, .displayName = u"Gone"_s, .sizeBytes = 640'000'000};
    const ModelFormModel model = modelFormModel(settings, {1, {other}}, u"/models"_s);
    EXPECT_TRUE(model.larger.isEmpty());
    EXPECT_TRUE(model.smaller.isEmpty());
    EXPECT_EQ(model.installed->current, u"Current: Gone · 640 MB"_s);
    EXPECT_EQ(model.installed->location, u"/models"_s);
}
