#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

/// Reads the plain text of a document in the Rich Text Format ("Rich Text Format 1.9.1"); nothing if it
/// doesn't begin as one. A document that is cut off or damaged gives what can be read of it.
///
/// Paragraphs and rows end with a line feed, the cells of a row are parted by tabulators, and a footnote
/// stands in square brackets where its mark does. The numbers and bullets of lists, the results of fields
/// and what is written in a shape are text. Headers and footers, which repeat on every page, pictures,
/// hidden text and whatever else isn't read on the page are left out, and optional hyphens with them.
///
/// One pass, in memory that is in proportion to the document. Any thread.
std::optional<QString> plainTextOfRichText(QByteArrayView document);
