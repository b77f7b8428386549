#pragma once

#include "screens/ChatScreens.h"
#include "screens/OnboardingModel.h"
#include "screens/SettingsPane.h"

#include <functional>

/// A screen, and how it comes to look as it does.
struct Screen {
    QString name;
    QSize size; ///< its own; empty for the size that is asked for
    std::function<QWidget *()> make;
};

/// Every screen of the program in every state worth seeing: what is drawn and what is checked of all of
/// them.
class AllScreens : public ChatScreens {
protected:
    QList<Screen> screens();

private:
    Screen onboarding(const QString &name, const OnboardingState &state, const QSize &size = {});

    QWidget *whySize(const OnboardingState &state);

    /// Three saved pages, the newest of which is chosen.
    QWidget *pages();

    QWidget *emptySchedules();

    /// One of each kind; the weekly one also runs in the background, and the single one is turned off.
    QWidget *schedules();

    /// The sheet behind the first button of that word; a new schedule is made one that runs once.
    QWidget *scheduleEditor(const QString &word);

    QWidget *pagePanel();

    QWidget *settings(SettingsPane pane);

    QWidget *memorySettings();

    /// With an update that has been found.
    QWidget *aboutSettings();

    QWidget *confirmation();
};
