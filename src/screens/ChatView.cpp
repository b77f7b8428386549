#include "screens/ChatView.h"

#include "core/AppState.h"
#include "screens/ChatScreen.h"
#include "screens/Look.h"
#include "screens/Placement.h"
#include "screens/RenameSheet.h"
#include "screens/SidebarView.h"
#include "screens/Style.h"

#include <QPainter>
#include <QSplitter>
#include <QVBoxLayout>

namespace {

/// The edge between two columns: a hairline.
class Edge : public QSplitterHandle {
public:
    Edge(const Look &look, QSplitter *columns) : QSplitterHandle(Qt::Horizontal, columns), m_look(look) {
        connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
    }

protected:
    void paintEvent(QPaintEvent *) override {
        QPainter painter(this);
        painter.fillRect(contentsRect(), m_look.palette().sidebar);
        painter.fillRect(contentsRect(), m_look.palette().hairline);
    }

private:
    const Look &m_look;
};

class Columns : public QSplitter {
public:
    Columns(const Look &look, QWidget *parent) : QSplitter(parent), m_look(look) {
        setHandleWidth(style::hairline);
        setChildrenCollapsible(false);
    }

protected:
    QSplitterHandle *createHandle() override { return new Edge(m_look, this); }

private:
    const Look &m_look;
};

} // namespace

ChatView::ChatView(AppState &app, const Look &look, Clock &clock, QWidget *parent)
    : QWidget(parent),
      m_columns(new Columns(look, this)),
      m_sidebar(new SidebarView(app, look, clock)),
      m_screen(new ChatScreen(app, look, clock)),
      m_rename(new RenameSheet(look, this)) {
    m_sidebar->setMinimumWidth(style::sidebarMinimumWidth);
    m_sidebar->setMaximumWidth(style::sidebarMaximumWidth);
    m_screen->setMinimumWidth(style::chatMinimumWidth);
    m_columns->addWidget(m_sidebar);
    m_columns->addWidget(m_screen);
    m_columns->setStretchFactor(1, 1);
    const int width = loadSidebarWidth().value_or(style::sidebarWidth);
    m_columns->setSizes({width, style::windowWidth - width});
    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->addWidget(m_columns);

    connect(m_sidebar, &SidebarView::settingsRequested, this, &ChatView::settingsRequested);
    connect(m_sidebar, &SidebarView::chatOpened, m_screen, &ChatScreen::focusComposer);
    connect(m_sidebar, &SidebarView::renameRequested, m_rename, &RenameSheet::open);
    // A question about a chat that one has left is over.
    connect(m_screen, &ChatScreen::chatChanged, m_rename, [this] { m_rename->setShown(false); });
    connect(m_rename, &RenameSheet::renamed, &app.chat(), &ChatController::renameConversation);
}

void ChatView::hideEvent(QHideEvent *event) {
    saveSidebarWidth(m_sidebar->width());
    m_rename->setShown(false);
    QWidget::hideEvent(event);
}
