#pragma once

#include <QList>
#include <QPointF>
#include <QRawFont>
#include <QString>

class QTextItem;

/// A piece of a laid text that has a place and a width, and that says something: a letter with its accents, a
/// ligature, an emoji. Lengths are in pixels.
struct TextShape {
    QString text; ///< nothing if another shape says what is seen here
    QRawFont font;
    QList<quint32> glyphs; ///< none if another shape shows what is said here
    QList<QPointF> places; ///< of the glyphs, from the first one; y from the baseline, downwards
    double left = 0;       ///< where it begins, from the beginning of the text
    double advance = 0;    ///< from there to where the next one may begin
};

/// The shapes of a piece of text that a painter draws, from left to right. All of its characters are in
/// them, those that aren't drawn with the ones before them.
///
/// Of text that runs from the right, no shape says more than one character: readers turn around what they
/// find there, but not all of them the characters of one shape. Needs a QGuiApplication.
QList<TextShape> shapesOf(const QTextItem &item);
