#include "screens/Spinner.h"

#include "screens/Look.h"

#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

// Angles of the painter: sixteenths of a degree, counted against the clock.
constexpr int fullTurn = 360 * 16;
constexpr int top = 90 * 16;
constexpr int arc = 100 * 16;
constexpr double trackOpacity = 0.2;

} // namespace

Spinner::Spinner(const Look &look, QWidget *parent) : MovingWidget(look, parent) {
    Spoken::install();
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setHasMotion(true);
}

QSize Spinner::sizeHint() const {
    return {style::spinner, style::spinner};
}

QString Spinner::spokenName() const {
    return u"Checking"_s;
}

void Spinner::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double inset = style::spinnerWeight / 2.0;
    const QRectF circle = QRectF(rect()).adjusted(inset, inset, -inset, -inset);
    QPen pen(withOpacity(amber(), trackOpacity), style::spinnerWeight, Qt::SolidLine, Qt::RoundCap);
    painter.setPen(pen);
    painter.drawEllipse(circle);
    pen.setColor(amber());
    painter.setPen(pen);
    const auto turned = motionTime() % style::spinnerTurn;
    painter.drawArc(circle, int(top - fullTurn * turned.count() / style::spinnerTurn.count()), -arc);
}
