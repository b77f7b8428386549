#include "screens/DateTimeField.h"

#include "screens/FieldFrame.h"
#include "screens/Icon.h"
#include "screens/Look.h"
#include "screens/Style.h"

#include <QCalendarWidget>
#include <QLineEdit>
#include <QPainter>
#include <QSignalBlocker>
#include <QTextCharFormat>
#include <QToolButton>
#include <QWheelEvent>

using namespace Qt::StringLiterals;

namespace {

/// The texts of the program are English wherever it runs.
const QLocale english = QLocale::c();

void drawChevron(QPainter &painter, const QPoint &middle, double angle, const QColor &ink) {
    QRectF sign(0, 0, style::chevron, style::chevron);
    sign.moveCenter({});
    painter.save();
    painter.translate(middle);
    painter.rotate(angle);
    drawIcon(painter, Icon::chevron, sign, ink);
    painter.restore();
}

QIcon chevronIcon(double angle, const QColor &ink) {
    constexpr int sharpest = 3;
    QPixmap picture(style::iconSize * sharpest, style::iconSize * sharpest);
    picture.fill(Qt::transparent);
    picture.setDevicePixelRatio(sharpest);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    drawChevron(painter, {style::iconSize / 2, style::iconSize / 2}, angle, ink);
    return picture;
}

} // namespace

DateTimeField::DateTimeField(const Look &look, Kind kind, const QString &name, QWidget *parent)
    : QDateTimeEdit(parent),
      m_look(look),
      m_kind(kind) {
    setAccessibleName(name);
    lineEdit()->setAccessibleName(name);
    setFrame(false);
    setFocusPolicy(Qt::StrongFocus);
    setLocale(english);
    setTimeSpec(Qt::UTC);
    setDisplayFormat(kind == Kind::date ? u"MMM d, yyyy"_s : u"HH:mm"_s);
    setWrapping(kind == Kind::time);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    lineEdit()->setTextMargins(style::fieldPadding - style::spaceTiny, 0, 0, 0);
    if (kind == Kind::date)
        addCalendar();
    connect(this, &QDateTimeEdit::dateTimeChanged, this, &DateTimeField::changed);
    connect(&look, &Look::changed, this, &DateTimeField::takeLook);
    takeLook();
}

void DateTimeField::addCalendar() {
    setCalendarPopup(true);
    auto *calendar = new QCalendarWidget;
    calendar->setLocale(english);
    calendar->setFirstDayOfWeek(Qt::Sunday);
    calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    calendar->setHorizontalHeaderFormat(QCalendarWidget::ShortDayNames);
    setCalendarWidget(calendar);
}

void DateTimeField::setReading(const QDateTime &reading) {
    const QSignalBlocker silence(this);
    setDateTime(reading);
}

QSize DateTimeField::sizeHint() const {
    // The widest month and the widest digits.
    const QString widest = m_kind == Kind::date ? u"Nov 00, 0000"_s : u"00:00"_s;
    return {QFontMetrics(font()).horizontalAdvance(widest) + style::fieldPadding + style::dateArrows,
            std::max(style::fieldHeight, QFontMetrics(font()).height() + style::spaceSmall)};
}

void DateTimeField::takeLook() {
    setFont(m_look.font(TextStyle::callout));
    QPalette colors = toolkitPalette(m_look.palette());
    colors.setColor(QPalette::Base, Qt::transparent);
    setPalette(colors);
    if (m_kind == Kind::date)
        takeLookInCalendar();
}

void DateTimeField::takeLookInCalendar() {
    calendarWidget()->setFont(m_look.font(TextStyle::control));
    calendarWidget()->setPalette(toolkitPalette(m_look.palette()));
    // No day of the week is redder than the others.
    QTextCharFormat day;
    day.setForeground(m_look.palette().ink);
    for (int weekday = Qt::Monday; weekday <= Qt::Sunday; ++weekday)
        calendarWidget()->setWeekdayTextFormat(Qt::DayOfWeek(weekday), day);
    // By the names that Qt gives them (qcalendarwidget.cpp), since it has its own icons there.
    constexpr double quarterTurn = 90;
    for (const auto &[name, angle] : {std::pair(u"qt_calendar_prevmonth"_s, quarterTurn),
                                      std::pair(u"qt_calendar_nextmonth"_s, -quarterTurn)}) {
        if (auto *button = calendarWidget()->findChild<QToolButton *>(name))
            button->setIcon(chevronIcon(angle, m_look.palette().onAccent()));
    }
}

void DateTimeField::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    drawFieldFrame(painter, rect(), m_look.palette(), hasFocus());
    drawArrows(painter);
}

void DateTimeField::wheelEvent(QWheelEvent *event) {
    // Who scrolls past it doesn't mean it.
    if (hasFocus())
        QDateTimeEdit::wheelEvent(event);
    else
        event->ignore();
}

void DateTimeField::drawArrows(QPainter &painter) const {
    const QColor ink = m_look.palette().secondaryInk();
    const QPoint middle(isRightToLeft() ? style::dateArrow : width() - style::dateArrow, height() / 2);
    if (m_kind == Kind::date)
        return drawChevron(painter, middle, 0, ink);
    constexpr double upwards = 180;
    const QPoint apart(0, style::dateArrowsApart);
    drawChevron(painter, middle - apart, upwards, ink);
    drawChevron(painter, middle + apart, 0, ink);
}
