#pragma once

#include <QWidget>

class Look;

/// The window of saved pages: their list, and the one that was chosen.
class PageListView : public QWidget {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    explicit PageListView(const Look &look, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const Look &m_look;
};
