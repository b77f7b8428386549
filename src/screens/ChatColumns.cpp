#include "screens/ChatColumns.h"

#include "screens/ColumnEdge.h"
#include "screens/InspectorColumn.h"
#include "screens/Style.h"

#include <algorithm>

using namespace Qt::StringLiterals;

ChatColumns::ChatColumns(const Look &look, QWidget *sidebar, QWidget *chat, QWidget *panel, QWidget *parent)
    : QSplitter(parent),
      m_look(look),
      m_sidebar(sidebar),
      m_chat(chat),
      m_inspector(new InspectorColumn(panel)),
      m_glide(style::inspectorGlide, QEasingCurve::InOutCubic) {
    setHandleWidth(style::hairline);
    setChildrenCollapsible(false);
    sidebar->setMinimumWidth(style::sidebarMinimumWidth);
    sidebar->setMaximumWidth(style::sidebarMaximumWidth);
    chat->setMinimumWidth(style::chatMinimumWidth);
    for (QWidget *column : {sidebar, chat, static_cast<QWidget *>(m_inspector)})
        addWidget(column);
    setStretchFactor(1, 1);
    m_inspector->hide();
    nameEdges();
    connect(&m_glide, &Glide::moved, this, [this] { place(qRound(m_glide.value())); });
    connect(&m_glide, &Glide::arrived, this, &ChatColumns::takeArrival);
    connect(this, &QSplitter::splitterMoved, this, &ChatColumns::takeDrag);
}

void ChatColumns::nameEdges() {
    ColumnEdge *edge = edgeBefore(m_chat);
    edge->setName(u"Width of the sidebar"_s);
    connect(edge, &ColumnEdge::moved, this, [this](int way) {
        m_sidebarWidth =
            std::clamp(m_sidebarWidth + way, style::sidebarMinimumWidth, style::sidebarMaximumWidth);
        place(panelWidth());
    });
    edge = edgeBefore(m_inspector);
    edge->setName(u"Width of the page"_s);
    connect(edge, &ColumnEdge::moved, this, [this](int way) {
        m_draggedWidth = std::clamp(m_inspector->width() - way, style::inspectorMinimumWidth,
                                    style::inspectorMaximumWidth);
        place(panelWidth());
    });
}

ColumnEdge *ChatColumns::edgeBefore(QWidget *column) const {
    return static_cast<ColumnEdge *>(handle(indexOf(column)));
}

void ChatColumns::setSidebarWidth(int width) {
    m_sidebarWidth = width;
    place(0);
}

void ChatColumns::setPanelShown(bool isShown) {
    if (std::exchange(m_isPanelShown, isShown) == isShown)
        return;
    const int before = m_inspector->isVisible() ? m_inspector->width() : 0;
    fitSidebar();
    const int width = isShown ? panelWidth() : m_inspector->width();
    m_inspector->setMoving(width);
    m_inspector->show();
    // The edge before the panel is there with it, and not only when the loop is back.
    refresh();
    place(before);
    m_glide.go(before, isShown ? width : 0, isVisible() ? m_look.motion() : Motion::reduced);
}

/// What is left for the panel beside the others at their least, and no more than it wants.
int ChatColumns::panelWidth() const {
    const int sidebar = m_sidebar->isHidden() ? 0 : m_sidebarWidth + handleWidth();
    const int room = width() - sidebar - style::chatMinimumWidth - handleWidth();
    return std::max(style::inspectorMinimumWidth,
                    std::min(m_draggedWidth.value_or(style::inspectorIdealWidth), room));
}

void ChatColumns::place(int panelWidth) {
    const int sidebar = m_sidebar->isHidden() ? 0 : m_sidebarWidth + handleWidth();
    const int panel = m_inspector->isHidden() ? 0 : panelWidth + handleWidth();
    setSizes({m_sidebarWidth, width() - sidebar - panel, panelWidth});
}

void ChatColumns::fitSidebar() {
    constexpr int all = style::sidebarMinimumWidth + style::chatMinimumWidth + style::inspectorMinimumWidth +
                        2 * style::hairline;
    m_sidebar->setVisible(!m_isPanelShown || width() >= all);
}

void ChatColumns::takeArrival() {
    m_inspector->setVisible(m_isPanelShown);
    m_inspector->settle();
    refresh();
    place(panelWidth());
    if (!m_isPanelShown)
        Q_EMIT panelGone();
}

void ChatColumns::takeDrag(int, int edge) {
    if (!m_sidebar->isHidden())
        m_sidebarWidth = m_sidebar->width();
    if (edge == indexOf(m_inspector) && m_isPanelShown && m_inspector->isSettled())
        m_draggedWidth = m_inspector->width();
}

void ChatColumns::resizeEvent(QResizeEvent *event) {
    fitSidebar();
    QSplitter::resizeEvent(event);
    if (m_inspector->isSettled())
        place(panelWidth());
}

QSplitterHandle *ChatColumns::createHandle() {
    return new ColumnEdge(m_look, this);
}
