#pragma once

#include <QStringList>

/// The families of the three kinds of type: Inter, Noto Serif and JetBrains Mono where they are
/// installed, else the system's own of that kind. Need a QGuiApplication.

const QString &sansFamily();
const QString &serifFamily();
const QString &monospacedFamily();

/// The family, and behind it the one for emoji, Noto Color Emoji, where that is installed. Without it the
/// toolkit takes them from the first font that has signs of that kind, of which few have colours.
QStringList withEmoji(const QString &family);
