#pragma once

#include <QByteArray>
#include <QPaintDevice>
#include <QUrl>

#include <memory>

class PdfEngine;

/// A single page of a PDF, to paint on as on anything else; a pixel is a point there. Text stays text:
/// what a reader copies from the page is what was written, in any script. Fonts are embedded, as far as they
/// are used; nothing is cut into several pages.
///
/// Takes what the drawings of this program need: filled and stroked paths in plain colours, text, clipping.
/// Main thread; needs a QGuiApplication.
class PdfPaper : public QPaintDevice {
public:
    /// `size` is in points, each of 1/72 inch.
    PdfPaper(const QString &title, const QSizeF &size);
    ~PdfPaper() override;

    /// A click on that area leads to the address.
    void addLink(const QRectF &area, const QUrl &address);

    /// The file, once nothing paints any more.
    QByteArray written() const;

    QPaintEngine *paintEngine() const override;

protected:
    int metric(PaintDeviceMetric metric) const override;

private:
    struct Link {
        QRectF area;
        QUrl address;
    };

    const QString m_title;
    const QSizeF m_size;
    QList<Link> m_links;
    std::unique_ptr<PdfEngine> m_engine;
};
