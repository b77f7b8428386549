#include "screens/Look.h"

#include <QApplication>
#include <QToolTip>

void Look::follow(const Settings &settings) {
    const TextPreferences text{settings.textSize, settings.typeFace};
    if (m_theme == settings.theme && m_text == text)
        return;
    m_theme = settings.theme;
    m_text = text;
    Q_EMIT changed();
}

void Look::setMotion(Motion motion) {
    if (std::exchange(m_motion, motion) != motion)
        Q_EMIT motionChanged();
}

void Look::applyToApplication() const {
    const QPalette colors = toolkitPalette(palette());
    if (QApplication::palette() != colors)
        QApplication::setPalette(colors);
    const QFont body = font(TextStyle::body);
    if (QApplication::font() != body)
        QApplication::setFont(body);
    // Tool tips have colours and a font of their own, which the application's replace.
    const QFont remark = font(TextStyle::caption);
    if (QToolTip::palette() != colors)
        QToolTip::setPalette(colors);
    if (QToolTip::font() != remark)
        QToolTip::setFont(remark);
}
