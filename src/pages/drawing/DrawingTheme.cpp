#include "pages/drawing/DrawingTheme.h"

#include "pages/PageColor.h"
#include "pages/drawing/ColorOf.h"
#include "pages/drawing/Typefaces.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double codeGroundOpacity = 0.07;

constexpr int captionSize = 10;
constexpr int leastCaption2Size = 9;
constexpr int valueSize = 26;
constexpr int pageTitleSize = 30;
constexpr int codeSize = 13;
constexpr int buttonSize = 12;

/// The scale of the steps, in parts of the body's size.
constexpr double title2Scale = 22.0 / 17;
constexpr double title3Scale = 20.0 / 17;

int sizeOf(TextStep step, int body) {
    switch (step) {
    case TextStep::title2:
        return int(std::lround(body * title2Scale));
    case TextStep::title3:
        return int(std::lround(body * title3Scale));
    case TextStep::headline:
    case TextStep::body:
    case TextStep::quote:
        return body;
    case TextStep::callout:
        return body - 1;
    case TextStep::monospacedCallout:
        return body - 2;
    case TextStep::caption:
    case TextStep::arrow:
        return captionSize;
    case TextStep::caption2:
        return std::max(body - 4, leastCaption2Size);
    case TextStep::value:
        return valueSize;
    case TextStep::code:
        return codeSize;
    case TextStep::button:
        return buttonSize;
    case TextStep::pageTitle:
        return pageTitleSize;
    }
    Q_UNREACHABLE();
}

QFont::Weight weightOf(TextStep step) {
    switch (step) {
    case TextStep::title2:
        return QFont::Bold;
    case TextStep::headline:
    case TextStep::caption:
    case TextStep::value:
    case TextStep::arrow:
    case TextStep::pageTitle:
        return QFont::DemiBold;
    case TextStep::button:
        return QFont::Medium;
    default:
        return QFont::Normal;
    }
}

bool hasSerifs(TextStep step) {
    return step == TextStep::quote || step == TextStep::pageTitle;
}

bool isMonospaced(TextStep step) {
    return step == TextStep::monospacedCallout || step == TextStep::caption || step == TextStep::code;
}

} // namespace

QFont DrawingTheme::font(TextStep step, double tracking) const {
    QFont font;
    font.setFamilies(withEmoji(familyOf(step)));
    font.setPixelSize(sizeOf(step, bodySize));
    font.setWeight(weightOf(step));
    font.setLetterSpacing(QFont::AbsoluteSpacing, tracking);
    font.setHintingPreference(hinting);
    font.setItalic(step == TextStep::quote);
    // Arrows stay the signs that were written.
    if (isMonospaced(step))
        font.setStyleStrategy(QFont::PreferNoShaping);
    return font;
}

const QString &DrawingTheme::familyOf(TextStep step) const {
    if (hasSerifs(step))
        return serifFamily();
    if (isMonospaced(step))
        return monospacedFamily();
    return family.isEmpty() ? sansFamily() : family;
}

QColor DrawingTheme::shade(double opacity) const {
    return faded(primary, opacity);
}

QColor DrawingTheme::codeGround() const {
    return shade(codeGroundOpacity);
}

QColor DrawingTheme::tint(QStringView name, const QColor &otherwise) const {
    const std::optional<Color> color = pageColor(name);
    return color ? colorOf(*color) : otherwise;
}

DrawingTheme paperTheme() {
    DrawingTheme theme;
    theme.primary = QColor::fromRgbF(0.11F, 0.11F, 0.12F);
    theme.secondary = QColor::fromRgbF(0.42F, 0.42F, 0.44F);
    theme.link = QColor::fromRgbF(0.09F, 0.36F, 0.76F);
    theme.selection = QColor::fromRgbF(0.75F, 0.85F, 0.98F);
    theme.hinting = QFont::PreferNoHinting;
    return theme;
}
