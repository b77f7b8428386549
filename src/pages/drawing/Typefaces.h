#pragma once

#include <QString>

/// The families of the three kinds of type: Inter, Noto Serif and JetBrains Mono where they are
/// installed, else the system's own of that kind. Need a QGuiApplication.

const QString &sansFamily();
const QString &serifFamily();
const QString &monospacedFamily();
