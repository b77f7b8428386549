#pragma once

#include "pages/drawing/Spoken.h"

#include <QSplitterHandle>

class Look;

/// The edge between two columns: a hairline that the mouse draws and the arrow keys move.
class ColumnEdge : public QSplitterHandle, public Spoken {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    ColumnEdge(const Look &look, QSplitter *columns);

    /// What it is the edge of.
    void setName(const QString &name) { m_name = name; }

    QAccessible::Role spokenRole() const override { return QAccessible::Splitter; }
    QString spokenName() const override { return m_name; }

Q_SIGNALS:
    /// A key moves it to the right by so many pixels, to the left where that is negative.
    void moved(int way);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    void fitMask();

    const Look &m_look;
    QString m_name;
};
