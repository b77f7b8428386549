#pragma once

#include "screens/AppFixture.h"
#include "screens/ApplicationIcon.h"
#include "screens/Label.h"
#include "screens/LoadingWordmark.h"
#include "screens/OnboardingView.h"
#include "screens/ProgressBar.h"
#include "screens/Sheet.h"
#include "screens/Spinner.h"
#include "screens/Style.h"
#include "screens/TextBox.h"

/// The onboarding screen in the smallest window.
class OnboardingFixture : public AppFixture {
protected:
    OnboardingFixture() : view(app, look) {
        view.resize(style::contentMinimumWidth, style::contentMinimumHeight);
        present(view);
    }

    void show(const OnboardingState &state) {
        view.setModel(onboardingModel(state));
        QCoreApplication::processEvents();
    }
    void show(const AppPhase &phase) { show(OnboardingState{.phase = phase}); }

    /// Has the program delete everything and begin anew, until a download is under way.
    void download() {
        start();
        app.deleteEverything();
        app.finishWelcome();
        ASSERT_TRUE(reaches<phase::Downloading>());
        QCoreApplication::processEvents();
    }

    /// Every line that is to be read, from top to bottom.
    QStringList lines() const {
        QStringList texts;
        for (const Label *label : view.findChildren<Label *>()) {
            if (label->isVisible())
                texts.append(label->text());
        }
        if (message()->isVisible())
            texts.append(message()->textView()->text());
        return texts;
    }

    /// Who has the focus when Tab is pressed again and again, until somebody has it once more.
    QStringList tabOrder() {
        constexpr int presses = 10;
        QStringList names;
        for (int press = 0; press < presses; ++press) {
            QWidget *focused = view.focusWidget();
            if (focused && focused != &view) {
                if (names.contains(spokenName(focused)))
                    break;
                names.append(spokenName(focused));
            }
            QTest::keyClick(&view, Qt::Key_Tab);
        }
        return names;
    }

    LoadingWordmark *name() const { return view.findChild<LoadingWordmark *>(); }
    ApplicationIcon *icon() const { return view.findChild<ApplicationIcon *>(); }
    ProgressBar *bar() const { return view.findChild<ProgressBar *>(); }
    TextBox *message() const { return view.findChild<TextBox *>(); }
    Spinner *spinner() const { return view.findChild<Spinner *>(); }
    Sheet *sheet() const { return view.findChild<Sheet *>(); }
    QPushButton *button(const QString &word) const { return buttonNamed(view, word); }

    StillLook look;
    OnboardingView view;
};
