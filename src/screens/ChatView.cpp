#include "screens/ChatView.h"

#include "core/AppState.h"
#include "pages/PageStore.h"
#include "screens/ChatColumns.h"
#include "screens/ChatScreen.h"
#include "screens/PagePanel.h"
#include "screens/Placement.h"
#include "screens/RenameSheet.h"
#include "screens/SidebarView.h"
#include "screens/Style.h"

#include <QVBoxLayout>

using namespace Qt::StringLiterals;

ChatView::ChatView(AppState &app, const Look &look, Clock &clock, QWidget *parent)
    : QWidget(parent),
      m_app(app),
      m_sidebar(new SidebarView(app, look, clock)),
      m_screen(new ChatScreen(app, look, clock)),
      m_panel(new PagePanel(look)),
      m_columns(new ChatColumns(look, m_sidebar, m_screen, m_panel, this)),
      m_rename(new RenameSheet(look, this)) {
    m_columns->setSidebarWidth(loadSidebarWidth().value_or(style::sidebarWidth));
    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->addWidget(m_columns);

    ChatController &chat = app.chat();
    connect(&chat, &ChatController::pageDraftChanged, this, &ChatView::showPageDraft);
    connect(m_panel, &PagePanel::closeRequested, &chat, &ChatController::closePageDraft);
    connect(m_panel, &PagePanel::saveRequested, this, &ChatView::savePageDraft);
    connect(m_columns, &ChatColumns::panelGone, m_panel, [this] { m_panel->setDocument(std::nullopt); });
    connect(m_screen, &ChatScreen::pagesRequested, this, &ChatView::pagesRequested);
    connect(m_sidebar, &SidebarView::settingsRequested, this, &ChatView::settingsRequested);
    connect(m_sidebar, &SidebarView::chatOpened, m_screen, &ChatScreen::focusComposer);
    connect(m_sidebar, &SidebarView::renameRequested, m_rename, &RenameSheet::open);
    // A schedule opens its chat at its time, also while somebody writes a title.
    connect(m_screen, &ChatScreen::chatChanged, m_rename, [this] {
        if (!m_rename->isShown())
            m_screen->focusComposer();
    });
    connect(m_rename, &RenameSheet::renamed, &app.chat(), &ChatController::renameConversation);
}

void ChatView::showPageDraft() {
    const std::optional<PageDocument> &draft = m_app.chat().pageDraft();
    // A page that goes is to be seen until it has gone.
    if (draft)
        m_panel->setDocument(draft);
    else if (m_panel->isAncestorOf(window()->focusWidget()))
        m_screen->focusComposer();
    m_columns->setPanelShown(draft.has_value());
}

void ChatView::savePageDraft() {
    ChatController &chat = m_app.chat();
    if (!chat.pageDraft())
        return;
    const QUuid id = chat.pageDraft()->id;
    chat.savePageDraft();
    if (loadPage(id))
        m_screen->showToast(u"Saved"_s);
}

void ChatView::hideEvent(QHideEvent *event) {
    saveSidebarWidth(m_columns->sidebarWidth());
    m_rename->setShown(false);
    QWidget::hideEvent(event);
}
