#include "screens/TextPreferences.h"

#include "pages/drawing/Typefaces.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int wordmarkSize = 44;
constexpr double headingTracking = -0.4;
constexpr double wordmarkTracking = -1;

const QString &family(TypeFace typeFace) {
    return typeFace == TypeFace::serif ? serifFamily() : sansFamily();
}

int sizeOf(TextStyle style, int body) {
    switch (style) {
    case TextStyle::wordmark:
        return wordmarkSize;
    case TextStyle::heading:
        return body + 13;
    case TextStyle::headline:
    case TextStyle::tagline:
        return body + 2;
    case TextStyle::title:
    case TextStyle::callout:
        return body - 1;
    case TextStyle::body:
        return body;
    case TextStyle::control:
    case TextStyle::caption:
        return body - 2;
    }
    Q_UNREACHABLE();
}

QFont::Weight weightOf(TextStyle style) {
    switch (style) {
    case TextStyle::wordmark:
    case TextStyle::heading:
        return QFont::Bold;
    case TextStyle::headline:
    case TextStyle::title:
        return QFont::DemiBold;
    case TextStyle::control:
        return QFont::Medium;
    case TextStyle::tagline:
    case TextStyle::body:
    case TextStyle::callout:
    case TextStyle::caption:
        return QFont::Normal;
    }
    Q_UNREACHABLE();
}

} // namespace

int bodySize(TextSize size) {
    static constexpr std::array sizes = {13, 14, 15, 17};
    return sizes[static_cast<size_t>(size)];
}

int lineSpacing(TextSize size) {
    static constexpr std::array spacings = {3, 4, 5, 6};
    return spacings[static_cast<size_t>(size)];
}

QString displayName(TextSize size) {
    static constexpr std::array<QStringView, 4> names = {u"Small", u"Medium", u"Large", u"Extra large"};
    return names[static_cast<size_t>(size)].toString();
}

QString displayName(TypeFace typeFace) {
    return typeFace == TypeFace::serif ? u"Serif"_s : u"Sans serif"_s;
}

QFont fontOf(TextStyle style, const TextPreferences &preferences) {
    QFont font;
    font.setFamilies(withEmoji(family(preferences.typeFace)));
    font.setPixelSize(sizeOf(style, bodySize(preferences.size)));
    font.setWeight(weightOf(style));
    if (style == TextStyle::wordmark)
        font.setLetterSpacing(QFont::AbsoluteSpacing, wordmarkTracking);
    else if (style == TextStyle::heading)
        font.setLetterSpacing(QFont::AbsoluteSpacing, headingTracking);
    return font;
}
