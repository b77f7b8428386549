#pragma once

#include "support/EnvironmentVariable.h"

/// While it lives, an engine that is started has no end in its replies, so that a test can meet one in
/// the middle. It is the real engine all the same.
class EndlessEngine {
    EnvironmentVariable m_real{"OSTRELIN_REAL_LLAMA_SERVER", qgetenv("OSTRELIN_LLAMA_SERVER")};
    EnvironmentVariable m_server{"OSTRELIN_LLAMA_SERVER", ENDLESS_SERVER};
};
