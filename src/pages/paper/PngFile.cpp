#include "pages/paper/PngFile.h"

#include <QImage>
#include <QtEndian>

#include <cmath>
#include <stdexcept>

#include <zlib.h>

namespace {

/// Letters on plain ground become hardly smaller with more effort, which would take thrice the time.
constexpr int effort = 2;
constexpr double inchesPerMetre = 1 / 0.0254;
constexpr qsizetype packingBuffer = 65536;

QByteArray bigEndian(quint32 value) {
    QByteArray bytes(sizeof value, 0);
    qToBigEndian(value, bytes.data());
    return bytes;
}

/// Each row begins with how it is told from others, which is not at all.
QByteArray filtered(const QImage &rows) {
    const QImage plain = rows.convertToFormat(QImage::Format_RGB888);
    const qsizetype rowSize = 3 * qsizetype(plain.width());
    QByteArray bytes;
    bytes.reserve(plain.height() * (rowSize + 1));
    for (int y = 0; y < plain.height(); ++y) {
        bytes.append(char(0));
        bytes.append(reinterpret_cast<const char *>(plain.constScanLine(y)), rowSize);
    }
    return bytes;
}

} // namespace

PngFile::PngFile(const QSize &size, int pixelsPerInch)
    : m_bytes("\x89PNG\r\n\x1A\n", 8),
      m_packing(std::make_unique<z_stream_s>()) {
    if (::deflateInit(m_packing.get(), effort) != Z_OK)
        throw std::bad_alloc();
    const QByteArray eightBitsOfThreeColors("\x08\x02\x00\x00\x00", 5);
    appendChunk("IHDR", bigEndian(quint32(size.width())) + bigEndian(quint32(size.height())) +
                            eightBitsOfThreeColors);
    const QByteArray density = bigEndian(quint32(std::lround(pixelsPerInch * inchesPerMetre)));
    const QByteArray perMetre("\x01", 1);
    appendChunk("pHYs", density + density + perMetre);
}

PngFile::~PngFile() {
    ::deflateEnd(m_packing.get());
}

void PngFile::append(const QImage &rows) {
    appendChunk("IDAT", packed(filtered(rows), Z_NO_FLUSH));
}

QByteArray PngFile::finished() {
    appendChunk("IDAT", packed({}, Z_FINISH));
    appendChunk("IEND", {});
    return m_bytes;
}

QByteArray PngFile::packed(const QByteArray &bytes, int flush) {
    QByteArray packed;
    QByteArray buffer(packingBuffer, Qt::Uninitialized);
    m_packing->next_in = reinterpret_cast<Bytef *>(const_cast<char *>(bytes.constData()));
    m_packing->avail_in = uInt(bytes.size());
    do {
        m_packing->next_out = reinterpret_cast<Bytef *>(buffer.data());
        m_packing->avail_out = uInt(buffer.size());
        ::deflate(m_packing.get(), flush);
        packed.append(buffer.constData(), buffer.size() - qsizetype(m_packing->avail_out));
    } while (m_packing->avail_out == 0);
    return packed;
}

void PngFile::appendChunk(const char *type, const QByteArray &data) {
    const QByteArray checked = type + data;
    const uLong checksum =
        ::crc32_z(0, reinterpret_cast<const Bytef *>(checked.constData()), z_size_t(checked.size()));
    m_bytes += bigEndian(quint32(data.size())) + checked + bigEndian(quint32(checksum));
}
