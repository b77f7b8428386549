#pragma once

#include "pages/PageDocument.h"

#include <QScrollArea>

class Look;
class MarkdownWidget;

/// A page to look at: its paper, smaller where it must be to fit, never larger, in a column that scrolls.
/// Its text can be selected and its links followed, with mouse or keys.
class PageSheet : public QScrollArea {
    Q_OBJECT

public:
    /// `paperWidth` is that of the page in its own size. `look` must outlive this object.
    PageSheet(const Look &look, int paperWidth, QWidget *parent = nullptr);

    /// Shows another page from its head on.
    void setPage(const PageDocument &page);
    void clear();

    /// The paper; null while there is no page.
    MarkdownWidget *paper() const { return m_paper; }
    double scale() const;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    /// The paper has the place of this widget in the order of Tab.
    void takeFocusOrder();
    void fit();

    const Look &m_look;
    const int m_paperWidth;
    QWidget *m_ground;
    MarkdownWidget *m_paper = nullptr;
};
