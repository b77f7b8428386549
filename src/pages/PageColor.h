#pragma once

#include <QString>
#include <QStringView>

#include <optional>

/// The colours of the page dialect. Any thread.

/// A colour of the sRGB space; each part from 0 to 1.
struct Color {
    double red = 0;
    double green = 0;
    double blue = 0;
    double opacity = 1;

    bool operator==(const Color &) const = default;
};

/// The colour of that name, in whatever case and with blanks around it; nothing for a name that is
/// none. Every figure then has a neutral colour of its own.
std::optional<Color> pageColor(QStringView name);

/// The colour of a chart's item at `index`, from 0: shades of the colour that `name` gives, or a colour
/// of the palette if it gives none. Both repeat after eight.
Color seriesColor(qsizetype index, QStringView name);

/// The caption of a callout whose fence names that colour, in lower case: "NOTE" unless the colour is
/// one of a warning, a danger or a success.
QString calloutLabel(QStringView color);
