#pragma once

#include "core/ProgramVersion.h"
#include "core/UpdateChecker.h"
#include "records/Settings.h"

/// The published state from which the pane about the program follows.
struct AboutState {
    ProgramVersion program;
    QString engineBuild;
    Settings settings;
    std::optional<ModelTier> activeTier;
    UpdateStatus updates;
};

/// What the pane tells of the program, its model and its engine, and of a newer release. A plain value.
struct AboutFormModel {
    QString version;
    QString poweredBy;
    QString engine;
    QString licences;
    bool canCheck = false;
    QString updates;     ///< how the check stands; empty for nothing to say
    QString downloading; ///< the word of the button that opens `downloadURL`; empty for none
    QUrl downloadURL;

    bool operator==(const AboutFormModel &) const = default;
};

AboutFormModel aboutFormModel(const AboutState &state);
