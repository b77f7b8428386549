#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/// The objects of a PDF file, and the file that they make (ISO 32000-1, 7.3 and 7.5). What is written of
/// them is the caller's; only streams, the table of places and the trailer are made here. Any thread.
class PdfFile {
public:
    /// The number under which other objects refer to one.
    using Object = int;

    /// A number for an object that is set later, so that others can refer to it before.
    Object reserve();
    void set(Object object, const QByteArray &body);
    Object add(const QByteArray &body);

    /// Adds bytes, compressed, with these entries in their dictionary.
    Object addStream(const QByteArray &entries, const QByteArray &bytes);

    /// The whole file. `catalog` and `information` are the two objects that the trailer names; every
    /// object must have been set.
    QByteArray written(Object catalog, Object information) const;

private:
    QList<QByteArray> m_bodies;
};

/// Values as PDF writes them.
namespace pdf {

/// At most three digits after the point, which is as fine as any printer. What is beyond all measure is
/// brought into one that every reader takes.
QByteArray number(double value);
QByteArray numbers(std::initializer_list<double> values);
QByteArray reference(PdfFile::Object object);
/// A text for a person, in any script.
QByteArray text(const QString &text);
/// Bytes as a string; for an address.
QByteArray string(const QByteArray &bytes);
/// The hexadecimal form of UTF-16, first byte first.
QByteArray utf16(QStringView text);
/// Four hexadecimal digits.
QByteArray code(int value);

} // namespace pdf
