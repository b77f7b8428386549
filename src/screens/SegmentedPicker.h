#pragma once

#include "pages/drawing/Spoken.h"

#include <QWidget>

class Look;
class SegmentButton;

/// One of a few words, all in sight: the chosen one stands out. The arrow keys go from one to the next.
class SegmentedPicker : public QWidget, public Spoken {
    Q_OBJECT

public:
    /// `name` is what the picker is called aloud. `look` must outlive this object.
    SegmentedPicker(const Look &look, const QString &name, const QStringList &words,
                    QWidget *parent = nullptr);

    /// The chosen word's place.
    int current() const;
    void setCurrent(int index);

    QAccessible::Role spokenRole() const override { return QAccessible::Grouping; }
    QString spokenName() const override { return m_name; }

Q_SIGNALS:
    /// The person has chosen that word.
    void picked(int index);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const Look &m_look;
    const QString m_name;
    QList<SegmentButton *> m_segments;
};
