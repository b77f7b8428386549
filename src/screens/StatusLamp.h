#pragma once

#include "engine/EngineStatus.h"

#include <QString>

/// What the lamp in the bar shows of the engine. A plain value.
struct StatusLamp {
    enum class Color { quiet, waking, good, bad };
    enum class Light { steady, pulsing };

    Color color = Color::quiet;
    Light light = Light::steady;
    QString accessibleText;

    bool operator==(const StatusLamp &) const = default;
};

/// The lamp for a state of the engine.
StatusLamp statusLamp(const EngineStatus &status);
