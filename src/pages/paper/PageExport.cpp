#include "pages/paper/PageExport.h"

#include "pages/drawing/PageCanvas.h"
#include "pages/paper/PdfPaper.h"
#include "pages/paper/PngFile.h"
#include "platform/WideRegisters.h"

#include <QImage>
#include <QPainter>

namespace {

constexpr int pointsPerInch = 72;
/// A picture is painted in bands: a painter on an image reaches no further than 32,767 pixels, and what is
/// painted is still in the processor's cache when it is packed.
constexpr int bandHeight = 512;

} // namespace

QByteArray exportPagePDF(const PageCanvas &canvas) {
    PdfPaper paper(canvas.title(), canvas.size());
    QPainter painter(&paper);
    canvas.draw(painter, QRectF({}, canvas.size()));
    painter.end();
    for (const Target &target : canvas.targets()) {
        if (target.kind != Target::Kind::link)
            continue;
        for (const QRectF &area : target.areas)
            paper.addLink(area, target.address);
    }
    return paper.written();
}

QByteArray exportPagePNG(const PageCanvas &canvas, int scale) {
    const QSize size = (canvas.size() * scale).toSize();
    PngFile file(size, scale * pointsPerInch);
    for (int top = 0; top < size.height(); top += bandHeight) {
        QImage band(size.width(), std::min(bandHeight, size.height() - top), QImage::Format_RGB32);
        QPainter painter(&band);
        painter.scale(scale, scale);
        painter.translate(0, -double(top) / scale);
        canvas.draw(painter, QRectF(0, double(top) / scale, canvas.width(), double(band.height()) / scale));
        painter.end();
        releaseWideRegisters();
        file.append(band);
    }
    return file.finished();
}
