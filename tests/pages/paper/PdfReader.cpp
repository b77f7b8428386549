#include "pages/paper/PdfReader.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

PdfReader::PdfReader(const QByteArray &pdf) : m_path(m_folder.filePath(u"page.pdf"_s)) {
    QFile file(m_path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(pdf) == pdf.size());
}

QString PdfReader::said(const QString &tool, const QStringList &arguments) const {
    QProcess process;
    process.start(tool, arguments);
    EXPECT_TRUE(process.waitForFinished(60'000) && process.exitCode() == 0) << tool.toStdString();
    EXPECT_EQ(process.readAllStandardError().toStdString(), "");
    return QString::fromUtf8(process.readAllStandardOutput());
}

QString PdfReader::text() const {
    static const QRegularExpression directions(u"[\\x{202A}-\\x{202E}]"_s);
    return said(u"pdftotext"_s, {m_path, u"-"_s}).remove(directions);
}

QString PdfReader::fact(const QString &name) const {
    const QRegularExpression line(u"^%1:\\s*(.*)$"_s.arg(name), QRegularExpression::MultilineOption);
    return line.match(said(u"pdfinfo"_s, {m_path})).captured(1);
}

QStringList PdfReader::addresses() const {
    QStringList addresses;
    const QStringList lines = said(u"pdfinfo"_s, {u"-url"_s, m_path}).split(u'\n', Qt::SkipEmptyParts);
    for (const QString &line : lines.mid(1))
        addresses.append(line.section(u' ', -1));
    return addresses;
}

QStringList PdfReader::fonts() const {
    return said(u"pdffonts"_s, {m_path}).split(u'\n', Qt::SkipEmptyParts).mid(2);
}

QImage PdfReader::picture() const {
    const QString root = m_folder.filePath(u"page"_s);
    said(u"pdftoppm"_s, {u"-r"_s, u"72"_s, u"-png"_s, u"-singlefile"_s, m_path, root});
    return QImage(root + u".png"_s).convertToFormat(QImage::Format_RGB32);
}

void expectAlike(const QImage &one, const QImage &other) {
    ASSERT_EQ(one.size(), other.size());
    const QSize small = one.size() / 4;
    const QImage first = one.scaled(small, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const QImage second = other.scaled(small, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    int different = 0;
    for (int y = 0; y < small.height(); ++y) {
        for (int x = 0; x < small.width(); ++x) {
            const QColor here = first.pixelColor(x, y);
            const QColor there = second.pixelColor(x, y);
            const int distance = std::abs(here.red() - there.red()) + std::abs(here.green() - there.green()) +
                                 std::abs(here.blue() - there.blue());
            different += distance > 120 ? 1 : 0;
        }
    }
    EXPECT_LT(different, small.width() * small.height() / 200);
}
