#pragma once

#include "screens/Glide.h"

#include <QProgressBar>

/// A thin bar that fills from the left. It goes to a new value evenly, or at once where motion is reduced
/// or nobody sees it.
class ProgressBar : public QProgressBar {
    Q_OBJECT

public:
    /// `look` must outlive this object. `name` is what the bar is called aloud.
    ProgressBar(const Look &look, const QString &name, QWidget *parent = nullptr);

    /// How much is done, 0 to 1.
    void setFraction(double fraction);

    /// What the bar shows of it now.
    double shownFraction() const { return m_shown.value(); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const Look &m_look;
    double m_fraction = 0;
    Glide m_shown;
};
