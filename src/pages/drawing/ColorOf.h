#pragma once

#include "pages/PageColor.h"

#include <QColor>

/// A colour of the page dialect as the toolkit has it.
inline QColor colorOf(const Color &color) {
    return QColor::fromRgbF(float(color.red), float(color.green), float(color.blue), float(color.opacity));
}

/// The colour at that share of its opacity.
inline QColor faded(QColor color, double opacity) {
    color.setAlphaF(float(color.alphaF() * opacity));
    return color;
}
