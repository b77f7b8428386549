#include "screens/OnboardingFixture.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QProgressBar>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

class OnboardingViewTest : public OnboardingFixture {
protected:
    const OnboardingState half{.phase = phase::Downloading{},
                               .activeTier = house,
                               .downloadProgress = DownloadProgress{1'500'000'000, 3'000'000'000, 2.5e6}};

    /// The same where the disk is why it isn't a larger model.
    OnboardingState onAFullDisk() const {
        OnboardingState state = half;
        state.diskNote =
            u"Ostrelin picked a lighter brain because your Mac is low on storage. Free up 40.0 GB "
            "to upgrade."_s;
        return state;
    }

    QRect placeOfName() const { return {name()->mapTo(&view, QPoint()), name()->size()}; }
};

TEST_F(OnboardingViewTest, whileItIsCheckedTheNameAndASpinnerStandThere) {
    show(phase::Checking{});
    EXPECT_TRUE(name()->isVisible());
    EXPECT_EQ(spokenName(name()), u"Ostrelin"_s);
    EXPECT_EQ(spokenRole(name()), QAccessible::StaticText);
    EXPECT_EQ(look.font(TextStyle::wordmark).pixelSize(), 44);
    EXPECT_TRUE(spinner()->isVisible());
    EXPECT_EQ(lines(), QStringList());
    EXPECT_EQ(tabOrder(), QStringList());
}

TEST_F(OnboardingViewTest, theWelcomeLeadsOnWithOneKey) {
    show(phase::Welcome{});
    EXPECT_EQ(lines(), QStringList{u"Free. Private. Works offline."_s});
    EXPECT_EQ(tabOrder(), QStringList{u"Get started"_s});
    EXPECT_TRUE(button(u"Get started"_s)->hasFocus());
    EXPECT_FALSE(spinner()->isVisible());
}

TEST_F(OnboardingViewTest, theStartScreenHasTheIconAtItsSize) {
    show(phase::NeedsInitialization{});
    EXPECT_EQ(lines(), QStringList{u"To get started, initialize Ostrelin."_s});
    EXPECT_FALSE(name()->isVisible());
    EXPECT_EQ(icon()->size(), QSize(112, 112));
    EXPECT_EQ(spokenName(icon()), u"Ostrelin"_s);
    EXPECT_EQ(spokenRole(icon()), QAccessible::Graphic);
    EXPECT_EQ(tabOrder(), QStringList{u"Start"_s});
    EXPECT_TRUE(button(u"Start"_s)->hasFocus());
}

TEST_F(OnboardingViewTest, theDownloadTellsItsSizeItsProgressAndItsTime) {
    show(half);
    EXPECT_EQ(lines(), (QStringList{u"Setting up Ostrelin for your Mac · 3.0 GB"_s,
                                    u"1.5 GB of 3.0 GB · about 10 min left"_s}));
    EXPECT_EQ(name()->filling(), 0.5);
    EXPECT_FALSE(name()->isWaking());
    EXPECT_EQ(bar()->width(), 380);
    EXPECT_EQ(spokenName(bar()), u"Model download"_s);
    EXPECT_EQ(spokenRole(bar()), QAccessible::ProgressBar);
    EXPECT_EQ(bar()->value(), 500);
    EXPECT_EQ(tabOrder(), (QStringList{u"Why this size?"_s, u"Pause"_s}));
}

TEST_F(OnboardingViewTest, aFullDiskIsToldWhereTheModelIs) {
    machine.freeDisk = 6'500'000'000;
    download();
    ASSERT_EQ(app.activeTier()->id, u"tent"_s);
    EXPECT_EQ(lines().last(), u"Ostrelin picked a lighter brain because your Mac is low on storage. "
                              "Free up 1.5 GB to upgrade."_s);
    EXPECT_EQ(tabOrder(), (QStringList{u"Why this size?"_s, u"Pause"_s}));
}

TEST_F(OnboardingViewTest, withoutALoudButtonTabBeginsAtTheFirstControl) {
    show(phase::Welcome{});
    show(half);
    EXPECT_EQ(view.focusWidget(), &view);
    QTest::keyClick(&view, Qt::Key_Tab);
    EXPECT_TRUE(button(u"Why this size?"_s)->hasFocus());
}

TEST_F(OnboardingViewTest, theEngineWakesUpWithoutControls) {
    show(phase::Starting{});
    EXPECT_EQ(lines(), QStringList{u"Waking up Ostrelin…"_s});
    EXPECT_TRUE(name()->isWaking());
    EXPECT_FALSE(bar()->isVisible());
    EXPECT_EQ(tabOrder(), QStringList());
}

TEST_F(OnboardingViewTest, theLinesHaveTheirFontsAndInks) {
    const auto expectLine = [this](const QString &text, TextStyle style, const QColor &ink) {
        for (const Label *label : view.findChildren<Label *>()) {
            if (label->isVisible() && label->text() == text) {
                EXPECT_EQ(label->font(), look.font(style));
                EXPECT_EQ(label->palette().color(QPalette::WindowText), ink);
                return;
            }
        }
        ADD_FAILURE() << text.toStdString();
    };
    show(phase::Welcome{});
    expectLine(u"Free. Private. Works offline."_s, TextStyle::tagline, look.palette().ink);
    show(phase::Starting{});
    expectLine(u"Waking up Ostrelin…"_s, TextStyle::callout, look.palette().secondaryInk());
    show(onAFullDisk());
    expectLine(u"Setting up Ostrelin for your Mac · 3.0 GB"_s, TextStyle::headline, look.palette().ink);
    expectLine(*onAFullDisk().diskNote, TextStyle::caption, look.palette().secondaryInk());
}

TEST_F(OnboardingViewTest, anErrorStandsAsItIsWithTwoButtons) {
    show(phase::Error{u"Line one\nline two"_s, false});
    EXPECT_EQ(lines(), QStringList{u"Line one\nline two"_s});
    EXPECT_TRUE(button(u"Try again"_s)->hasFocus());
    EXPECT_FALSE(button(u"Switch to a lighter model"_s));
    EXPECT_EQ(tabOrder(), (QStringList{u"Try again"_s, u"Copy diagnostic info"_s, u"Line one\nline two"_s}));
}

TEST_F(OnboardingViewTest, aLighterModelIsTheThirdButton) {
    show(phase::Error{u"x"_s, true});
    EXPECT_EQ(tabOrder(), (QStringList{u"Try again"_s, u"Copy diagnostic info"_s,
                                       u"Switch to a lighter model"_s, u"x"_s}));
}

TEST_F(OnboardingViewTest, aLongMessageTakesItsLinesAndThenScrolls) {
    show(phase::Error{u"A sentence that takes about half of a line here. "_s.repeated(4), true});
    EXPECT_EQ(message()->height(), message()->textView()->height());
    show(phase::Error{u"A long message. "_s.repeated(100), true});
    EXPECT_EQ(message()->height(), style::onboardingTextHeight);
    EXPECT_GT(message()->textView()->height(), message()->height());
}

TEST_F(OnboardingViewTest, anUnsupportedMachineHasNoButtons) {
    show(phase::Unsupported{u"Too small."_s});
    EXPECT_EQ(lines(), QStringList{u"Too small."_s});
    // The reason can be read and copied by keys, and that is all.
    EXPECT_EQ(tabOrder(), QStringList{u"Too small."_s});
}

TEST_F(OnboardingViewTest, theNameDoesNotMoveWithThePhase) {
    show(phase::Checking{});
    const QRect before = placeOfName();
    const int floor = before.bottom();
    for (const AppPhase &phase : {AppPhase(phase::Welcome{}), AppPhase(phase::Downloading{}),
                                  AppPhase(phase::Starting{}), AppPhase(phase::Unsupported{u"x"_s}),
                                  AppPhase(phase::Error{u"A long message. "_s.repeated(60), true})}) {
        show(phase);
        EXPECT_EQ(placeOfName(), before);
    }
    show(phase::NeedsInitialization{});
    EXPECT_EQ(icon()->mapTo(&view, icon()->rect().bottomLeft()).y(), floor);
}

TEST_F(OnboardingViewTest, everythingHasRoomAtEverySizeOfText) {
    for (const TextSize size : textSizes) {
        for (const TypeFace face : typeFaces) {
            Settings settings;
            settings.textSize = size;
            settings.typeFace = face;
            look.follow(settings);
            show(onAFullDisk());
            const QWidget *last = button(u"Pause"_s);
            const QRect buttons(last->mapTo(&view, QPoint()), last->size());
            EXPECT_LT(buttons.bottom(), view.height());
            EXPECT_EQ(last->height(), last->sizeHint().height());
            for (const Label *line : view.findChildren<Label *>()) {
                if (line->isVisible() && line->hasHeightForWidth()) {
                    EXPECT_GE(line->height(), line->heightForWidth(line->width()));
                }
            }
            show(phase::Error{u"A long message. "_s.repeated(60), true});
            const QWidget *lighter = button(u"Switch to a lighter model"_s);
            EXPECT_EQ(lighter->height(), lighter->sizeHint().height());
            EXPECT_LT(lighter->mapTo(&view, lighter->rect().bottomRight()).x(), view.width());
        }
    }
    EXPECT_LE(view.minimumSizeHint().height(), style::contentMinimumHeight);
}

TEST_F(OnboardingViewTest, tryAgainLooksForAModelAnew) {
    start();
    show(phase::Error{u"x"_s, false});
    QSignalSpy phases(&app, &AppState::phaseChanged);
    click(button(u"Try again"_s));
    ASSERT_TRUE(reaches<phase::Ready>());
    EXPECT_EQ(phases.count(), 2);
}

TEST_F(OnboardingViewTest, theDiagnosticInfoIsTheEnginesLog) {
    show(phase::Error{u"x"_s, false});
    app.engine().logs()->append(u"one"_s);
    app.engine().logs()->append(u"two"_s);
    click(button(u"Copy diagnostic info"_s));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"one\ntwo"_s);
}

TEST_F(OnboardingViewTest, withoutALogTheClipboardIsEmptied) {
    QGuiApplication::clipboard()->setText(u"before"_s);
    show(phase::Error{u"x"_s, false});
    click(button(u"Copy diagnostic info"_s));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QString());
}

TEST_F(OnboardingViewTest, aLighterModelIsDownloaded) {
    start();
    ASSERT_EQ(app.activeTier()->id, u"house"_s);
    show(phase::Error{u"x"_s, true});
    click(button(u"Switch to a lighter model"_s));
    EXPECT_TRUE(isIn<phase::Downloading>(app.phase()));
    EXPECT_EQ(app.activeTier()->id, u"tent"_s);
    EXPECT_EQ(lines().value(0), u"Setting up Ostrelin for your Mac · 1.0 GB"_s);
}

TEST_F(OnboardingViewTest, getStartedRemembersAndGoesOnToTheModel) {
    changeSettings([](Settings &settings) { settings.didFinishWelcome = false; });
    startUntil<phase::Welcome>();
    QTest::keyClick(&view, Qt::Key_Tab);
    QTest::keyClick(view.focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(loadSettings().didFinishWelcome);
    ASSERT_TRUE(reaches<phase::Ready>());
}

TEST_F(OnboardingViewTest, startDoesTheSameWhenEverythingIsGone) {
    start();
    app.deleteEverything();
    EXPECT_EQ(lines(), QStringList{u"To get started, initialize Ostrelin."_s});
    click(button(u"Start"_s));
    EXPECT_TRUE(loadSettings().didFinishWelcome);
    ASSERT_TRUE(reaches<phase::Downloading>());
    EXPECT_EQ(app.activeTier()->id, u"house"_s);
}

TEST_F(OnboardingViewTest, aPauseKeepsTheBlockAndTheFocusAndCanBeEnded) {
    download();
    QPushButton *pause = button(u"Pause"_s);
    ASSERT_TRUE(pause);
    pause->setFocus(Qt::TabFocusReason);
    QTest::keyClick(pause, Qt::Key_Space);
    EXPECT_TRUE(app.isDownloadPaused());
    EXPECT_FALSE(button(u"Pause"_s));
    EXPECT_EQ(button(u"Resume"_s), pause);
    EXPECT_TRUE(pause->hasFocus());
    EXPECT_TRUE(bar()->isVisible());
    QTest::keyClick(pause, Qt::Key_Space);
    EXPECT_FALSE(app.isDownloadPaused());
    EXPECT_TRUE(button(u"Pause"_s));
}
