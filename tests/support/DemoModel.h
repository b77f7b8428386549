#pragma once

#include "records/ModelTier.h"

/// The small model that comes with the program, for tests that want a real one.

/// Where its file lies.
QString demoModelPath();

/// What a catalog says of it that serves it there.
ModelTier demoTier(const QUrl &url = {});

/// Makes the application folder that of a person who has seen the welcome screen and downloaded it.
void installDemoModel();
