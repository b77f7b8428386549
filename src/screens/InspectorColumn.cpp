#include "screens/InspectorColumn.h"

#include "screens/Style.h"

InspectorColumn::InspectorColumn(QWidget *panel) : m_panel(panel) {
    panel->setParent(this);
    settle();
}

void InspectorColumn::setMoving(int panelWidth) {
    m_panelWidth = panelWidth;
    setMinimumWidth(0);
    placePanel();
}

void InspectorColumn::settle() {
    m_panelWidth = 0;
    setMinimumWidth(style::inspectorMinimumWidth);
    setMaximumWidth(style::inspectorMaximumWidth);
    placePanel();
}

void InspectorColumn::resizeEvent(QResizeEvent *) {
    placePanel();
}

void InspectorColumn::placePanel() {
    m_panel->setGeometry(0, 0, isSettled() ? width() : m_panelWidth, height());
}
