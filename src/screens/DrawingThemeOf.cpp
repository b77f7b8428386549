#include "screens/DrawingThemeOf.h"

#include "screens/Look.h"

DrawingTheme drawingThemeOf(const Look &look) {
    const Palette &palette = look.palette();
    return {.primary = palette.ink,
            .secondary = palette.secondaryInk(),
            .link = palette.linkInk(),
            .selection = palette.selection(),
            .family = look.font(TextStyle::body).family(),
            .bodySize = bodySize(look.text().size),
            .lineSpacing = lineSpacing(look.text().size)};
}
