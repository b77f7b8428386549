#pragma once

#include <QByteArray>
#include <QSize>

#include <memory>

class QImage;
struct z_stream_s;

/// A picture in the Portable Network Graphics format (ISO/IEC 15948), row by row as it is made, so that a
/// high one never stands in memory as a whole. It has no transparency. Any thread.
class PngFile {
public:
    /// `size` and `pixelsPerInch` of the whole picture.
    PngFile(const QSize &size, int pixelsPerInch);
    ~PngFile();
    PngFile(const PngFile &) = delete;
    PngFile &operator=(const PngFile &) = delete;

    /// The next rows, as wide as the picture.
    void append(const QImage &rows);

    /// The file, once it has all its rows. To be asked once.
    QByteArray finished();

private:
    void appendChunk(const char *type, const QByteArray &data);
    QByteArray packed(const QByteArray &bytes, int flush);

    QByteArray m_bytes;
    std::unique_ptr<z_stream_s> m_packing;
};
