#include "screens/ApplicationIcon.h"

#include "screens/Style.h"

#include <QPainter>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

namespace {

QPixmap drawn(int pixels) {
    QPixmap picture(pixels, pixels);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    QSvgRenderer(u":/icons/ostrelin.svg"_s).render(&painter);
    return picture;
}

} // namespace

QIcon applicationIcon() {
    QIcon icon;
    for (const int pixels : {16, 24, 32, 48, 64, 128})
        icon.addPixmap(drawn(pixels));
    return icon;
}

ApplicationIcon::ApplicationIcon(QWidget *parent) : QWidget(parent) {
    Spoken::install();
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize ApplicationIcon::sizeHint() const {
    return {style::applicationIcon, style::applicationIcon};
}

QString ApplicationIcon::spokenName() const {
    return u"Ostrelin"_s;
}

void ApplicationIcon::paintEvent(QPaintEvent *) {
    const int pixels = qRound(width() * devicePixelRatioF());
    if (m_picture.width() != pixels)
        m_picture = drawn(pixels);
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(rect(), m_picture);
}
