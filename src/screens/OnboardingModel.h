#pragma once

#include "core/AppPhase.h"
#include "engine/DownloadProgress.h"
#include "records/ModelTier.h"

#include <QList>
#include <QString>

#include <optional>

/// The published state from which the onboarding screen follows.
struct OnboardingState {
    AppPhase phase;
    std::optional<ModelTier> activeTier;
    std::optional<ModelTier> pendingTier;
    std::optional<DownloadProgress> downloadProgress;
    bool isDownloadPaused = false;
    std::optional<QString> diskNote;
};

/// What the onboarding screen shows. A plain value.
struct OnboardingModel {
    /// What stands at the top: the program's name, the name that fills as the download goes on, or the
    /// program's icon.
    enum class Top { name, fillingName, icon };

    enum class Button { getStarted, start, tryAgain, copyDiagnostics, tryLighter, whySize, pause, resume };

    struct Download {
        QString headline;
        double fraction = 0; ///< of the file that is here, 0 to 1
        QString status;
        QString note; ///< why it isn't a better model; empty for nothing

        bool operator==(const Download &) const = default;
    };

    Top top = Top::name;
    double filling = 0; ///< of the name, 0 to 1
    bool isWaking = false;
    bool showsSpinner = false;
    QString tagline; ///< what the program is, or wants; empty for nothing
    QString callout; ///< a word on what goes on; empty for none
    QString message; ///< what went wrong, as it stands; empty for nothing
    std::optional<Download> download;
    QList<Button> buttons; ///< in reading order

    bool operator==(const OnboardingModel &) const = default;
};

OnboardingModel onboardingModel(const OnboardingState &state);

/// What the button is called.
QString nameOf(OnboardingModel::Button button);

/// True for the button that leads on.
bool isLoud(OnboardingModel::Button button);
