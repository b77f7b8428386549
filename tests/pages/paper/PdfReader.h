#pragma once

#include <QImage>
#include <QString>
#include <QTemporaryDir>

/// A PDF as poppler's tools read it. They must be installed; whatever they complain about fails the test.
class PdfReader {
public:
    explicit PdfReader(const QByteArray &pdf);

    /// The text, without the marks that only tell its direction.
    QString text() const;
    /// The same with every stretch of white space as one space.
    QString words() const { return text().simplified(); }
    /// The value of a line of what pdfinfo says.
    QString fact(const QString &name) const;
    /// The addresses of the links, in order.
    QStringList addresses() const;
    /// The lines of pdffonts, a font each.
    QStringList fonts() const;
    /// The only page, a pixel to a point.
    QImage picture() const;

private:
    QString said(const QString &tool, const QStringList &arguments) const;

    QTemporaryDir m_folder;
    QString m_path;
};

/// Two programs smooth edges in two ways: the pictures are compared when they are much smaller.
void expectAlike(const QImage &one, const QImage &other);
