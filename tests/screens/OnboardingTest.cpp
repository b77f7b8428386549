#include "screens/AppFixture.h"
#include "screens/Label.h"
#include "screens/OnboardingView.h"
#include "screens/Spinner.h"
#include "screens/Style.h"
#include "screens/TextBox.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

class OnboardingViewTest : public AppFixture {
protected:
    OnboardingViewTest() : view(app, look) {
        view.resize(style::contentMinimumWidth, style::contentMinimumHeight);
        present(view);
    }

    void show(const AppPhase &phase) { view.setModel(onboardingModel(phase)); }

    QStringList visibleLabels() const {
        QStringList texts;
        for (const Label *label : view.findChildren<Label *>()) {
            if (label->isVisible())
                texts.append(label->text());
        }
        texts.sort();
        return texts;
    }

    Label *wordmark() const {
        const auto labels = view.findChildren<Label *>();
        return *std::find_if(labels.begin(), labels.end(),
                             [](const Label *label) { return label->text() == u"Ostrelin"_s; });
    }

    bool hasSpinner() const { return view.findChild<Spinner *>()->isVisible(); }

    StillLook look;
    OnboardingView view;
};

} // namespace

TEST(OnboardingModelTest, everyPhaseShowsItsOwn) {
    EXPECT_EQ(onboardingModel(phase::Checking{}), (OnboardingModel{.showsSpinner = true}));
    EXPECT_EQ(onboardingModel(phase::Starting{}), (OnboardingModel{.callout = u"Waking up Ostrelin…"_s}));
    EXPECT_EQ(onboardingModel(phase::Ready{}), OnboardingModel());
    EXPECT_EQ(onboardingModel(phase::Error{u"It\nbroke."_s, false}),
              (OnboardingModel{.message = u"It\nbroke."_s, .help = OnboardingModel::Help::tryAgain}));
}

TEST_F(OnboardingViewTest, theNameStandsThereAt44) {
    show(phase::Checking{});
    EXPECT_EQ(visibleLabels(), QStringList{u"Ostrelin"_s});
    EXPECT_EQ(wordmark()->font().pixelSize(), 44);
    EXPECT_TRUE(hasSpinner());
}

TEST_F(OnboardingViewTest, theNameDoesNotMoveWithThePhase) {
    show(phase::Checking{});
    QCoreApplication::processEvents();
    const QRect before = wordmark()->geometry();
    show(phase::Error{u"A long message. "_s.repeated(60), false});
    QCoreApplication::processEvents();
    EXPECT_EQ(wordmark()->geometry(), before);
}

TEST_F(OnboardingViewTest, itTellsThatTheEngineWakesUp) {
    show(phase::Starting{});
    EXPECT_EQ(visibleLabels(), (QStringList{u"Ostrelin"_s, u"Waking up Ostrelin…"_s}));
    EXPECT_FALSE(hasSpinner());
}

TEST_F(OnboardingViewTest, anErrorStandsAsItIsWithTwoButtons) {
    show(phase::Error{u"Line one\nline two"_s, false});
    EXPECT_EQ(view.findChild<TextBox *>()->textView()->text(), u"Line one\nline two"_s);
    EXPECT_TRUE(buttonNamed(view, u"Try again"_s));
    EXPECT_TRUE(buttonNamed(view, u"Copy diagnostic info"_s));
    show(phase::Starting{});
    EXPECT_FALSE(buttonNamed(view, u"Try again"_s));
}

TEST_F(OnboardingViewTest, tryAgainLooksForAModelAnew) {
    start();
    show(phase::Error{u"x"_s, false});
    QSignalSpy phases(&app, &AppState::phaseChanged);
    click(buttonNamed(view, u"Try again"_s));
    ASSERT_TRUE(reaches<phase::Ready>());
    EXPECT_EQ(phases.count(), 2);
}

TEST_F(OnboardingViewTest, theDiagnosticInfoIsTheEnginesLog) {
    show(phase::Error{u"x"_s, false});
    app.engine().logs()->append(u"one"_s);
    app.engine().logs()->append(u"two"_s);
    click(buttonNamed(view, u"Copy diagnostic info"_s));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"one\ntwo"_s);
}

TEST_F(OnboardingViewTest, withoutALogTheClipboardIsEmptied) {
    QGuiApplication::clipboard()->setText(u"before"_s);
    show(phase::Error{u"x"_s, false});
    click(buttonNamed(view, u"Copy diagnostic info"_s));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QString());
}
