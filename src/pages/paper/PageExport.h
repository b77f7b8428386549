#pragma once

#include <QByteArray>

class PageCanvas;

/// A page as a PDF of one single page, as large as the page is, a pixel to a point. Text stays text that can
/// be searched and copied, and links lead where they lead. Main thread; needs a QGuiApplication.
QByteArray exportPagePDF(const PageCanvas &canvas);

/// A page as a PNG with that many pixels to each of its own, in both directions. Main thread; needs a
/// QGuiApplication.
QByteArray exportPagePNG(const PageCanvas &canvas, int scale = 2);
