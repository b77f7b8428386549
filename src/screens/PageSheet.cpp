#include "screens/PageSheet.h"

#include "pages/PageDate.h"
#include "pages/drawing/MarkdownWidget.h"
#include "pages/drawing/PageCanvas.h"
#include "screens/Look.h"
#include "screens/Shadow.h"
#include "screens/Style.h"

#include <QDesktopServices>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// What the paper lies on, with its shadow.
class Ground : public QWidget {
public:
    explicit Ground(const Look &look) : m_look(look) {}

protected:
    void paintEvent(QPaintEvent *) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        for (const QObject *child : children()) {
            const QRect paper = static_cast<const QWidget *>(child)->geometry();
            drawShadow(painter, paper, 0, m_look.palette().shadow());
        }
    }

private:
    const Look &m_look;
};

} // namespace

PageSheet::PageSheet(const Look &look, int paperWidth, QWidget *parent)
    : QScrollArea(parent),
      m_look(look),
      m_paperWidth(paperWidth),
      m_ground(new Ground(look)) {
    setAccessibleName(u"Page"_s);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // The bar lies over the margin, so that the page's size doesn't depend on it.
    setViewportMargins(0, 0, -style::scrollBar, 0);
    verticalScrollBar()->parentWidget()->raise();
    viewport()->setAutoFillBackground(false);
    setWidget(m_ground);
    m_ground->setAutoFillBackground(false);
    connect(&look, &Look::changed, m_ground, qOverload<>(&QWidget::update));
}

void PageSheet::setPage(const PageDocument &page) {
    const bool hadFocus = hasFocus();
    delete m_paper;
    m_paper = new MarkdownWidget(std::make_unique<PageCanvas>(page.title, page.markdown, m_paperWidth,
                                                              page.updatedAt, PageCanvas::Medium::screen),
                                 m_ground);
    m_paper->setAccessibleName(page.title + u", "_s + shownDate(page.updatedAt));
    connect(m_paper, &MarkdownWidget::linkActivated, this,
            [](const QUrl &address) { QDesktopServices::openUrl(address); });
    connect(m_paper, &MarkdownWidget::caretMoved, this, [this](const QRect &caret) {
        const QPoint middle = caret.center() + m_paper->pos();
        ensureVisible(middle.x(), middle.y(), 0, caret.height());
    });
    takeFocusOrder();
    fit();
    m_paper->show();
    verticalScrollBar()->setValue(0);
    if (hadFocus)
        m_paper->setFocus();
}

void PageSheet::clear() {
    delete std::exchange(m_paper, nullptr);
}

void PageSheet::takeFocusOrder() {
    m_paper->setFocusPolicy(Qt::StrongFocus);
    setFocusProxy(nullptr);
    setTabOrder(this, m_paper);
    setFocusProxy(m_paper);
}

double PageSheet::scale() const {
    const int available = std::max(width() - 2 * style::paperMargin, 1);
    return std::min(double(available) / m_paperWidth, 1.0);
}

void PageSheet::fit() {
    if (!m_paper)
        return;
    m_paper->setScale(scale());
    const QSize size = m_paper->sizeHint();
    m_paper->setGeometry({{(width() - size.width()) / 2, style::paperMargin}, size});
    m_ground->resize(viewport()->width(), size.height() + 2 * style::paperMargin);
    m_ground->update();
}

void PageSheet::resizeEvent(QResizeEvent *event) {
    fit();
    QScrollArea::resizeEvent(event);
}
