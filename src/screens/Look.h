#pragma once

#include "screens/Palette.h"
#include "screens/TextPreferences.h"

#include <QObject>

/// Whether things on screen may move.
enum class Motion { full, reduced };

/// What every widget asks for its colours, fonts and leave to move. The owner of the window keeps it
/// in step with the settings. Main thread only.
class Look : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    const Palette &palette() const { return paletteOf(m_theme); }
    const TextPreferences &text() const { return m_text; }
    QFont font(TextStyle style) const { return fontOf(style, m_text); }
    Motion motion() const { return m_motion; }
    Theme theme() const { return m_theme; }

    /// Takes theme, text size and face from the settings.
    void follow(const Settings &settings);
    void setMotion(Motion motion);

    /// Gives the application object these colours and this font; nothing is set that it already has.
    void applyToApplication() const;

Q_SIGNALS:
    /// Colours or fonts are other ones.
    void changed();
    void motionChanged();

private:
    Theme m_theme = Settings().theme;
    TextPreferences m_text;
    Motion m_motion = Motion::full;
};
