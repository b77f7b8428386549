#include "pages/paper/PdfFile.h"

#include <algorithm>
#include <cmath>

PdfFile::Object PdfFile::reserve() {
    m_bodies.append(QByteArray());
    return Object(m_bodies.size());
}

void PdfFile::set(Object object, const QByteArray &body) {
    m_bodies[object - 1] = body;
}

PdfFile::Object PdfFile::add(const QByteArray &body) {
    const Object object = reserve();
    set(object, body);
    return object;
}

PdfFile::Object PdfFile::addStream(const QByteArray &entries, const QByteArray &bytes) {
    // The toolkit puts the length before the compressed bytes.
    constexpr qsizetype lengthPrefix = 4;
    const QByteArray packed = qCompress(bytes).sliced(lengthPrefix);
    return add("<<" + entries + "/Filter/FlateDecode/Length " + QByteArray::number(packed.size()) +
               ">>stream\n" + packed + "\nendstream");
}

QByteArray PdfFile::written(Object catalog, Object information) const {
    // Four bytes above 127 tell programs that carry files that this one isn't text.
    QByteArray file = "%PDF-1.7\n%\xE2\xE3\xCF\xD3\n";
    QByteArray places = "0000000000 65535 f \n";
    for (qsizetype index = 0; index < m_bodies.size(); ++index) {
        places += QByteArray::number(file.size()).rightJustified(10, '0') + " 00000 n \n";
        file += QByteArray::number(index + 1) + " 0 obj\n" + m_bodies.at(index) + "\nendobj\n";
    }
    const QByteArray count = QByteArray::number(m_bodies.size() + 1);
    const QByteArray table = QByteArray::number(file.size());
    return file + "xref\n0 " + count + '\n' + places + "trailer\n<</Size " + count + "/Root " +
           pdf::reference(catalog) + "/Info " + pdf::reference(information) + ">>\nstartxref\n" + table +
           "\n%%EOF\n";
}

QByteArray pdf::number(double value) {
    if (!std::isfinite(value))
        return "0";
    constexpr double farthest = 1e9;
    const qint64 thousandths = std::llround(std::clamp(value, -farthest, farthest) * 1000);
    if (thousandths % 1000 == 0)
        return QByteArray::number(thousandths / 1000);
    QByteArray digits = QByteArray::number(double(thousandths) / 1000, 'f', 3);
    while (digits.endsWith('0'))
        digits.chop(1);
    return digits;
}

QByteArray pdf::numbers(std::initializer_list<double> values) {
    QByteArray text;
    for (const double value : values)
        text += number(value) + ' ';
    return text;
}

QByteArray pdf::reference(PdfFile::Object object) {
    return QByteArray::number(object) + " 0 R";
}

QByteArray pdf::text(const QString &text) {
    return "<FEFF" + utf16(text) + '>';
}

QByteArray pdf::string(const QByteArray &bytes) {
    return '<' + bytes.toHex() + '>';
}

QByteArray pdf::utf16(QStringView text) {
    QByteArray hex;
    // On the way half pairs of units become the sign for what can't be read.
    for (const QChar unit : QString::fromUtf8(text.toUtf8()))
        hex += code(unit.unicode());
    return hex;
}

QByteArray pdf::code(int value) {
    return QByteArray::number(value, 16).rightJustified(4, '0');
}
