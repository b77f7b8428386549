#pragma once

#include "pages/drawing/PageCanvas.h"

#include <QByteArray>
#include <QString>

/// A page that is exported in benchmarks, and the toolkit's own writers for it.

/// The text of a page with every kind of block ten times.
QString longPageText();

/// The page, made anew from its text, as wide as the widest in which the program exports one.
PageCanvas longPage();

QByteArray toolkitPDF(const PageCanvas &page);

/// Leaves out what is beyond the reach of a painter on an image.
QByteArray toolkitPNG(const PageCanvas &page);
