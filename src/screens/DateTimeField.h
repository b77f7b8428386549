#pragma once

#include <QDateTimeEdit>

class Look;

/// A date, or an hour and a minute, to be written, or to be chosen by mouse: the date in a calendar, the time
/// with two arrows. The arrow keys up and down change the part where the cursor is.
class DateTimeField : public QDateTimeEdit {
    Q_OBJECT

public:
    enum class Kind { date, time };

    /// `name` is what the field is called aloud. `look` must outlive this object.
    DateTimeField(const Look &look, Kind kind, const QString &name, QWidget *parent = nullptr);

    /// Shows a reading of the clock on the wall (WallClock.h), and doesn't tell of it.
    void setReading(const QDateTime &reading);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

Q_SIGNALS:
    /// The person has made another date or time of it.
    void changed();

protected:
    void paintEvent(QPaintEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    void addCalendar();
    void takeLook();
    void takeLookInCalendar();
    void drawArrows(QPainter &painter) const;

    const Look &m_look;
    const Kind m_kind;
};
