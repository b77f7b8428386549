#include "pages/paper/PdfPaper.h"

#include "pages/paper/PdfEngine.h"
#include "pages/paper/PdfFile.h"

namespace {

constexpr int pointsPerInch = 72;
constexpr double millimetresPerPoint = 25.4 / pointsPerInch;

} // namespace

PdfPaper::PdfPaper(const QString &title, const QSizeF &size)
    : m_title(title),
      m_size(size),
      m_engine(std::make_unique<PdfEngine>()) {}

PdfPaper::~PdfPaper() = default;

void PdfPaper::addLink(const QRectF &area, const QUrl &address) {
    m_links.append({area, address});
}

QPaintEngine *PdfPaper::paintEngine() const {
    return m_engine.get();
}

QByteArray PdfPaper::written() const {
    PdfFile file;
    QByteArray links;
    for (const Link &link : m_links) {
        const PdfFile::Object annotation =
            file.add("<</Type/Annot/Subtype/Link/F 4/Border[0 0 0]/Rect[" +
                     pdf::numbers({link.area.left(), m_size.height() - link.area.bottom(), link.area.right(),
                                   m_size.height() - link.area.top()}) +
                     "]/A<</S/URI/URI" + pdf::string(link.address.toEncoded()) + ">>>>");
        links += pdf::reference(annotation) + ' ';
    }
    // A page counts from its foot, a painter from its head.
    const QByteArray fromTheTop = "1 0 0 -1 0 " + pdf::number(m_size.height()) + " cm\n";
    const PdfFile::Object content = file.addStream({}, fromTheTop + m_engine->content());
    const PdfFile::Object pages = file.reserve();
    const PdfFile::Object page =
        file.add("<</Type/Page/Parent " + pdf::reference(pages) + "/MediaBox[0 0 " +
                 pdf::numbers({m_size.width(), m_size.height()}) + "]/Contents " + pdf::reference(content) +
                 "/Resources<<" + m_engine->writeResources(file) + ">>/Annots[" + links + "]>>");
    file.set(pages, "<</Type/Pages/Count 1/Kids[" + pdf::reference(page) + "]>>");
    const PdfFile::Object catalog = file.add("<</Type/Catalog/Pages " + pdf::reference(pages) +
                                             "/ViewerPreferences<</DisplayDocTitle true>>>>");
    const PdfFile::Object information = file.add("<</Title" + pdf::text(m_title) + "/Creator(Ostrelin)>>");
    return file.written(catalog, information);
}

int PdfPaper::metric(PaintDeviceMetric metric) const {
    switch (metric) {
    case PdmWidth:
        return qCeil(m_size.width());
    case PdmHeight:
        return qCeil(m_size.height());
    case PdmWidthMM:
        return qRound(m_size.width() * millimetresPerPoint);
    case PdmHeightMM:
        return qRound(m_size.height() * millimetresPerPoint);
    case PdmDpiX:
    case PdmDpiY:
    case PdmPhysicalDpiX:
    case PdmPhysicalDpiY:
        return pointsPerInch;
    case PdmDevicePixelRatio:
        return 1;
    case PdmDevicePixelRatioScaled:
        return int(devicePixelRatioFScale());
    case PdmDepth:
        return 24;
    default:
        return 0;
    }
}
