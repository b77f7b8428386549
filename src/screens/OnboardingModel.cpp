#include "screens/OnboardingModel.h"

using namespace Qt::StringLiterals;

OnboardingModel onboardingModel(const AppPhase &phase) {
    OnboardingModel model;
    if (std::holds_alternative<phase::Checking>(phase)) {
        model.showsSpinner = true;
    } else if (std::holds_alternative<phase::Starting>(phase)) {
        model.callout = u"Waking up Ostrelin…"_s;
    } else if (const auto *error = std::get_if<phase::Error>(&phase)) {
        model.message = error->message;
        model.help = OnboardingModel::Help::tryAgain;
    }
    return model;
}
