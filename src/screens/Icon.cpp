#include "screens/Icon.h"

#include <QPaintDevice>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

namespace {

QString fileOf(Icon icon) {
    switch (icon) {
    case Icon::arrowUp:
        return u":/icons/arrow-up.svg"_s;
    case Icon::brain:
        return u":/icons/brain.svg"_s;
    case Icon::check:
        return u":/icons/check.svg"_s;
    case Icon::chevron:
        return u":/icons/chevron.svg"_s;
    case Icon::chip:
        return u":/icons/chip.svg"_s;
    case Icon::clock:
        return u":/icons/clock.svg"_s;
    case Icon::close:
        return u":/icons/close.svg"_s;
    case Icon::download:
        return u":/icons/download.svg"_s;
    case Icon::gear:
        return u":/icons/gear.svg"_s;
    case Icon::globe:
        return u":/icons/globe.svg"_s;
    case Icon::information:
        return u":/icons/information.svg"_s;
    case Icon::magnifier:
        return u":/icons/magnifier.svg"_s;
    case Icon::page:
        return u":/icons/page.svg"_s;
    case Icon::palette:
        return u":/icons/palette.svg"_s;
    case Icon::paperclip:
        return u":/icons/paperclip.svg"_s;
    case Icon::plus:
        return u":/icons/plus.svg"_s;
    case Icon::richPage:
        return u":/icons/rich-page.svg"_s;
    case Icon::sparkles:
        return u":/icons/sparkles.svg"_s;
    case Icon::stop:
        return u":/icons/stop.svg"_s;
    case Icon::trash:
        return u":/icons/trash.svg"_s;
    case Icon::warning:
        return u":/icons/warning.svg"_s;
    }
    Q_UNREACHABLE();
}

QPixmap render(Icon icon, int pixels, const QColor &color) {
    QPixmap picture(pixels, pixels);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    QSvgRenderer(fileOf(icon)).render(&painter);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(picture.rect(), color);
    return picture;
}

} // namespace

void drawIcon(QPainter &painter, Icon icon, const QRectF &area, const QColor &color) {
    const int pixels = qRound(area.width() * painter.device()->devicePixelRatioF());
    const QString key = u"icon %1 %2 %3"_s.arg(fileOf(icon)).arg(pixels).arg(color.rgba());
    QPixmap picture;
    if (!QPixmapCache::find(key, &picture)) {
        picture = render(icon, pixels, color);
        QPixmapCache::insert(key, picture);
    }
    painter.drawPixmap(area, picture, picture.rect());
}
