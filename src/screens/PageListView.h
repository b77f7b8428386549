#pragma once

#include <QWidget>

class Look;
class PageList;
class PageView;

/// The window of saved pages: their list, and the one that was chosen. What is saved while it is open shows
/// when it comes up again.
class PageListView : public QWidget {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    explicit PageListView(const Look &look, QWidget *parent = nullptr);

    /// Lists what is saved now, and shows no page.
    void beginAnew();

protected:
    void showEvent(QShowEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void refresh();

    const Look &m_look;
    QWidget *m_sidebar;
    PageList *m_list;
    PageView *m_page;
};
