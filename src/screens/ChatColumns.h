#pragma once

#include "screens/Glide.h"
#include "screens/Style.h"

#include <QSplitter>

#include <optional>

class ColumnEdge;
class InspectorColumn;
class Look;

/// The sidebar, the chat and, while there is something to show, a panel beside them; the edges between them
/// can be moved. None can be pushed away. In a window that hasn't room for all three the sidebar makes way
/// for the panel.
class ChatColumns : public QSplitter {
    Q_OBJECT

public:
    /// Takes the three widgets. `look` must outlive this object.
    ChatColumns(const Look &look, QWidget *sidebar, QWidget *chat, QWidget *panel, QWidget *parent = nullptr);

    /// How wide the sidebar is, while it is there.
    void setSidebarWidth(int width);
    int sidebarWidth() const { return m_sidebarWidth; }

    /// Lets the panel come to its ideal width, or to the one that the person gave it, or go.
    void setPanelShown(bool isShown);

Q_SIGNALS:
    /// The panel is out of sight.
    void panelGone();

protected:
    QSplitterHandle *createHandle() override;
    void resizeEvent(QResizeEvent *event) override;

private:
    int panelWidth() const;
    void place(int panelWidth);
    void fitSidebar();
    void takeArrival();
    void nameEdges();
    ColumnEdge *edgeBefore(QWidget *column) const;
    void takeDrag(int place, int edge);

    const Look &m_look;
    QWidget *m_sidebar;
    QWidget *m_chat;
    InspectorColumn *m_inspector;
    Glide m_glide;
    int m_sidebarWidth = style::sidebarWidth;
    bool m_isPanelShown = false;
    std::optional<int> m_draggedWidth; ///< of the panel
};
