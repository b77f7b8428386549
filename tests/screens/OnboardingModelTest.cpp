#include "screens/OnboardingModel.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using Button = OnboardingModel::Button;
using Top = OnboardingModel::Top;

namespace {

OnboardingModel modelOf(const AppPhase &phase) {
    return onboardingModel({.phase = phase});
}

/// A download that is that far.
OnboardingModel downloading(const DownloadProgress &progress) {
    return onboardingModel({.phase = phase::Downloading{}, .downloadProgress = progress});
}

ModelTier tierOf(qint64 bytes) {
    ModelTier tier;
    tier.sizeBytes = bytes;
    return tier;
}

} // namespace

TEST(OnboardingModelTest, whileItIsCheckedThereIsNothingButASpinner) {
    EXPECT_EQ(modelOf(phase::Checking{}), (OnboardingModel{.showsSpinner = true}));
}

TEST(OnboardingModelTest, theWelcomeSaysWhatTheProgramIs) {
    EXPECT_EQ(modelOf(phase::Welcome{}), (OnboardingModel{.tagline = u"Free. Private. Works offline."_s,
                                                          .buttons = {Button::getStarted}}));
}

TEST(OnboardingModelTest, theStartScreenHasTheIcon) {
    EXPECT_EQ(modelOf(phase::NeedsInitialization{}),
              (OnboardingModel{.top = Top::icon,
                               .tagline = u"To get started, initialize Ostrelin."_s,
                               .buttons = {Button::start}}));
}

TEST(OnboardingModelTest, theEngineWakesUp) {
    EXPECT_EQ(
        modelOf(phase::Starting{}),
        (OnboardingModel{.top = Top::fillingName, .isWaking = true, .callout = u"Waking up Ostrelin…"_s}));
}

TEST(OnboardingModelTest, theNameStaysFilledWhileTheEngineWakesUpAfterADownload) {
    const OnboardingModel model =
        onboardingModel({.phase = phase::Starting{}, .downloadProgress = DownloadProgress{10, 10, 1}});
    EXPECT_EQ(model.filling, 1);
    EXPECT_FALSE(model.download);
}

TEST(OnboardingModelTest, anErrorStandsAsItIsWithTwoButtonsOrThree) {
    EXPECT_EQ(modelOf(phase::Error{u"It\nbroke."_s, false}),
              (OnboardingModel{.message = u"It\nbroke."_s,
                               .buttons = {Button::tryAgain, Button::copyDiagnostics}}));
    EXPECT_EQ(modelOf(phase::Error{u"x"_s, true}).buttons,
              (QList{Button::tryAgain, Button::copyDiagnostics, Button::tryLighter}));
}

TEST(OnboardingModelTest, nothingCanBeDoneAboutAnUnsupportedMachine) {
    EXPECT_EQ(modelOf(phase::Unsupported{u"Too small."_s}), (OnboardingModel{.message = u"Too small."_s}));
}

TEST(OnboardingModelTest, thePhasesThatAreNeverSeenHereShowTheNameAlone) {
    EXPECT_EQ(modelOf(phase::Ready{}), OnboardingModel());
    EXPECT_EQ(modelOf(phase::NeedsDownload{u"x"_s, {}}), OnboardingModel());
}

TEST(OnboardingModelTest, theHeadlineTellsTheSizeOfTheModel) {
    OnboardingState state{.phase = phase::Downloading{}};
    EXPECT_EQ(onboardingModel(state).download->headline, u"Setting up Ostrelin for your Mac · 0 MB"_s);
    state.pendingTier = tierOf(640'000'000);
    EXPECT_EQ(onboardingModel(state).download->headline, u"Setting up Ostrelin for your Mac · 640 MB"_s);
    state.activeTier = tierOf(2'900'000'000);
    EXPECT_EQ(onboardingModel(state).download->headline, u"Setting up Ostrelin for your Mac · 2.9 GB"_s);
}

TEST(OnboardingModelTest, aDownloadWithoutAWordYetHappensOnce) {
    const OnboardingModel model = modelOf(phase::Downloading{});
    EXPECT_EQ(model.top, Top::fillingName);
    EXPECT_EQ(model.filling, 0);
    EXPECT_FALSE(model.isWaking);
    EXPECT_EQ(model.download->fraction, 0);
    EXPECT_EQ(model.download->status, u"This happens once."_s);
    EXPECT_EQ(model.buttons, (QList{Button::whySize, Button::pause}));
}

TEST(OnboardingModelTest, whatIsThereAlreadyIsChecked) {
    const OnboardingModel model = downloading({500, 1000, 0, true});
    EXPECT_EQ(model.download->status, u"Checking the download…"_s);
    EXPECT_EQ(model.download->fraction, 0.5);
}

TEST(OnboardingModelTest, theStatusTellsHowFarItIsAndHowLongItTakes) {
    EXPECT_EQ(downloading({1'700'000'000, 2'900'000'000, 3'333'333}).download->status,
              u"1.7 GB of 2.9 GB · about 6 min left"_s);
}

TEST(OnboardingModelTest, aDownloadThatHardlyMovesHasNoEstimate) {
    for (const double speed : {1.0, 0.5, 0.0})
        EXPECT_EQ(downloading({1'000'000, 2'000'000'000, speed}).download->status,
                  u"1 MB of 2.0 GB · calculating time left"_s);
    EXPECT_NE(downloading({1'000'000, 2'000'000'000, 1.01}).download->status,
              u"1 MB of 2.0 GB · calculating time left"_s);
}

TEST(OnboardingModelTest, theFillingIsAShareOfTheWholeAndNeverMore) {
    EXPECT_EQ(downloading({1, 4, 0}).filling, 0.25);
    EXPECT_EQ(downloading({1, 4, 0}).download->fraction, 0.25);
    EXPECT_EQ(downloading({5, 4, 0}).download->fraction, 1);
    EXPECT_EQ(downloading({5, 0, 0}).filling, 0);
    EXPECT_EQ(downloading({5, 0, 0}).download->fraction, 0);
}

TEST(OnboardingModelTest, aPauseKeepsTheBlock) {
    const OnboardingModel model = onboardingModel({.phase = phase::Downloading{},
                                                   .downloadProgress = DownloadProgress{1, 4, 0},
                                                   .isDownloadPaused = true});
    EXPECT_EQ(model.download, downloading({1, 4, 0}).download);
    EXPECT_EQ(model.buttons, (QList{Button::whySize, Button::resume}));
}

TEST(OnboardingModelTest, theNoteOnTheDiskStandsWithTheDownloadAlone) {
    OnboardingState state{.phase = phase::Downloading{}, .diskNote = u"Free up 9.0 GB."_s};
    EXPECT_EQ(onboardingModel(state).download->note, u"Free up 9.0 GB."_s);
    EXPECT_EQ(modelOf(phase::Downloading{}).download->note, QString());
    for (const AppPhase &phase :
         {AppPhase(phase::Checking{}), AppPhase(phase::Starting{}), AppPhase(phase::Error{u"x"_s, true})}) {
        state.phase = phase;
        EXPECT_EQ(onboardingModel(state), modelOf(phase));
    }
}

TEST(OnboardingModelTest, theButtonsHaveTheirNames) {
    EXPECT_EQ(nameOf(Button::getStarted), u"Get started"_s);
    EXPECT_EQ(nameOf(Button::start), u"Start"_s);
    EXPECT_EQ(nameOf(Button::tryAgain), u"Try again"_s);
    EXPECT_EQ(nameOf(Button::copyDiagnostics), u"Copy diagnostic info"_s);
    EXPECT_EQ(nameOf(Button::tryLighter), u"Switch to a lighter model"_s);
    EXPECT_EQ(nameOf(Button::whySize), u"Why this size?"_s);
    EXPECT_EQ(nameOf(Button::pause), u"Pause"_s);
    EXPECT_EQ(nameOf(Button::resume), u"Resume"_s);
}

TEST(OnboardingModelTest, thereIsNeverMoreThanOneLoudButton) {
    for (const AppPhase &phase : {AppPhase(phase::Welcome{}), AppPhase(phase::NeedsInitialization{}),
                                  AppPhase(phase::Downloading{}), AppPhase(phase::Error{u"x"_s, true})}) {
        const QList<Button> buttons = modelOf(phase).buttons;
        EXPECT_LE(std::count_if(buttons.begin(), buttons.end(), isLoud), 1);
    }
}
