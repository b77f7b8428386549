#pragma once

#include "core/AppPhase.h"

#include <QString>

/// What the onboarding screen shows under the program's name. A plain value.
struct OnboardingModel {
    enum class Help { none, tryAgain };

    bool showsSpinner = false;
    QString callout; ///< a word on what goes on; empty for none
    QString message; ///< what went wrong, as it stands; empty for nothing
    Help help = Help::none;

    bool operator==(const OnboardingModel &) const = default;
};

OnboardingModel onboardingModel(const AppPhase &phase);
