#include "pages/PageColor.h"

#include "pages/Lines.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr Color blue{0.13, 0.42, 0.86};
constexpr Color green{0.11, 0.58, 0.33};
constexpr Color amber{0.82, 0.55, 0.05};
constexpr Color red{0.78, 0.22, 0.22};
constexpr Color purple{0.48, 0.28, 0.76};
constexpr Color pink{0.82, 0.27, 0.53};
constexpr Color teal{0.09, 0.53, 0.56};
constexpr Color gray{0.40, 0.43, 0.48};

struct NamedColor {
    QStringView name;
    Color color;
};

constexpr std::array<NamedColor, 15> vocabulary{{
    {u"blue", blue},
    {u"info", blue},
    {u"green", green},
    {u"success", green},
    {u"amber", amber},
    {u"warning", amber},
    {u"red", red},
    {u"danger", red},
    {u"error", red},
    {u"purple", purple},
    {u"pink", pink},
    {u"teal", teal},
    {u"gray", gray},
    {u"grey", gray},
    {u"muted", gray},
}};

constexpr std::array<Color, 8> palette{blue, purple, teal, amber, pink, green, red, gray};
constexpr std::array<double, 8> opacities{1.0, 0.72, 0.5, 0.34, 0.88, 0.6, 0.42, 0.26};

} // namespace

std::optional<Color> pageColor(QStringView name) {
    const QString wanted = trimmedLine(name).toString().toLower();
    for (const NamedColor &each : vocabulary) {
        if (each.name == wanted)
            return each.color;
    }
    return std::nullopt;
}

Color seriesColor(qsizetype index, QStringView name) {
    const auto place = static_cast<size_t>(index) % palette.size();
    std::optional<Color> color = pageColor(name);
    if (!color)
        return palette[place];
    color->opacity = opacities[place];
    return *color;
}

QString calloutLabel(QStringView color) {
    if (color == u"warning" || color == u"amber")
        return u"WARNING"_s;
    if (color == u"danger" || color == u"error" || color == u"red")
        return u"IMPORTANT"_s;
    if (color == u"success" || color == u"green")
        return u"TIP"_s;
    return u"NOTE"_s;
}
