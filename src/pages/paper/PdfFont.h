#pragma once

#include "pages/paper/CompactFont.h"
#include "pages/paper/PdfFile.h"
#include "pages/paper/TextShape.h"

#include <QHash>

/// A typeface in a PDF: just the shapes that were drawn with it, each with a code of its own and the text
/// that it says, so that a reader finds and copies what was written, whatever it looks like. Needs a
/// QGuiApplication.
class PdfFont {
public:
    /// The face in one size; `number` tells it from the others of the file.
    PdfFont(const QRawFont &face, int number);

    bool isOf(const QRawFont &face) const { return m_face == face; }
    /// True if there is no code left.
    bool isFull() const;
    /// True if its glyphs are pictures, which have no outlines.
    bool hasPictures() const { return m_hasPictures; }
    /// Its name among the resources of a page.
    QByteArray resource() const { return "F" + QByteArray::number(m_number); }

    /// The code of a shape in this face; the same for the same shape.
    int codeOf(const TextShape &shape);
    /// How far a code moves on, in thousandths of the size.
    int advanceOf(int code) const { return m_glyphs.at(code).advance; }

    PdfFile::Object writeTo(PdfFile &file) const;

private:
    GlyphOutline outlineOf(const TextShape &shape) const;
    QByteArray name() const;
    PdfFile::Object writeDescriptor(PdfFile &file) const;
    PdfFile::Object writeTexts(PdfFile &file) const;
    QByteArray advances() const;

    const QRawFont m_face;
    QRawFont m_large; ///< the face in the size in which outlines are taken
    const int m_number;
    const bool m_hasPictures;
    QList<GlyphOutline> m_glyphs; ///< by code; the first is never drawn
    QStringList m_texts;          ///< likewise
    QHash<QByteArray, int> m_codes;
};
