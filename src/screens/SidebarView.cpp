#include "screens/SidebarView.h"

#include "core/AppState.h"
#include "platform/Clock.h"
#include "screens/ChatList.h"
#include "screens/CheckToggle.h"
#include "screens/Label.h"
#include "screens/Look.h"
#include "screens/RangeMenu.h"
#include "screens/Style.h"
#include "screens/SwitchRow.h"
#include "screens/SymbolButton.h"
#include "screens/WideButton.h"

#include <QPainter>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// How late a new day may show after the machine has slept.
constexpr std::chrono::minutes longestSleep{10};

QDateTime localNow(const Clock &clock) {
    return clock.now().toLocalTime();
}

} // namespace

SidebarView::SidebarView(AppState &app, const Look &look, Clock &clock, QWidget *parent)
    : QWidget(parent),
      m_app(app),
      m_look(look),
      m_clock(clock),
      m_rangeMenu(new RangeMenu(look, this)),
      m_list(new ChatList(look, this)),
      m_emptyText(new Label(look, TextStyle::caption, Label::Ink::secondary, Label::Fit::wrapped, this)),
      m_searchRow(new QWidget(this)),
      m_offline(new SwitchRow(look, u"Offline Mode"_s)),
      m_searchRemark(new Label(look, TextStyle::caption, Label::Ink::secondary, Label::Fit::wrapped)) {
    m_searchRemark->setText(u"Web search needs a larger model."_s);
    build();
    observe();
    m_rangeMenu->setRange(m_range);
    followConversation();
    refresh();
    m_days.start([this](std::stop_token stop) { return followDays(stop); });
}

QLayout *SidebarView::makeToolbar() {
    auto *newChat = new WideButton(m_look, Icon::plus, u"New Chat"_s, this);
    auto *settings = new SymbolButton(m_look, Icon::gear, u"Settings"_s, this);
    connect(newChat, &WideButton::clicked, this, [this] {
        m_app.chat().newChat();
        Q_EMIT chatOpened();
    });
    connect(settings, &SymbolButton::clicked, this, &SidebarView::settingsRequested);
    auto *row = new QHBoxLayout;
    row->setSpacing(style::spaceSmall);
    row->addWidget(newChat, 1);
    row->addWidget(settings);
    return row;
}

void SidebarView::build() {
    constexpr int padding = style::space;
    constexpr int inset = style::chatRowPadding;
    auto *bottom = new QVBoxLayout(m_searchRow);
    bottom->setContentsMargins(inset, style::space, inset - style::spaceTiny, style::space);
    bottom->addWidget(m_offline);
    bottom->addWidget(m_searchRemark);
    m_emptyText->setContentsMargins(inset, style::spaceSmall, inset, 0);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(padding, padding, padding, 0);
    column->setSpacing(0);
    column->addLayout(makeToolbar());
    column->addSpacing(style::space);
    column->addWidget(m_rangeMenu, 0, Qt::AlignLeft);
    column->addSpacing(style::spaceTiny);
    column->addWidget(m_list, 1);
    column->addWidget(m_emptyText, 1, Qt::AlignTop);
    column->addWidget(m_searchRow);
}

void SidebarView::observe() {
    ChatController &chat = m_app.chat();
    connect(&chat, &ChatController::summariesChanged, this, &SidebarView::refresh);
    connect(&chat, &ChatController::isGeneratingChanged, this, &SidebarView::refresh);
    connect(&chat, &ChatController::conversationChanged, this, &SidebarView::followConversation);
    connect(&m_app, &AppState::settingsChanged, this, &SidebarView::refresh);
    connect(&m_app, &AppState::activeTierChanged, this, &SidebarView::refresh);
    connect(&m_look, &Look::changed, this, qOverload<>(&QWidget::update));
    connect(m_rangeMenu, &RangeMenu::picked, this, &SidebarView::setRange);
    connect(m_list, &ChatList::chosen, this, &SidebarView::open);
    connect(m_list, &ChatList::renameRequested, this, &SidebarView::renameRequested);
    connect(m_list, &ChatList::deleteRequested, &chat, &ChatController::deleteConversation);
    connect(m_offline->toggle(), &CheckToggle::turned, this, &SidebarView::setOffline);
}

void SidebarView::setRange(SessionRange range) {
    m_range = range;
    m_rangeMenu->setRange(range);
    refresh();
}

void SidebarView::open(const QUuid &id) {
    m_app.chat().openConversation(id);
    Q_EMIT chatOpened();
}

void SidebarView::setOffline(bool isOffline) {
    m_app.changeSetting(&Settings::searchMode, searchModeOf(isOffline));
}

void SidebarView::followConversation() {
    // A reply that streams changes the chat many times a second; what is listed stays.
    const auto &chat = m_app.chat().conversation();
    const QUuid id = chat ? chat->id : QUuid();
    if (std::exchange(m_openID, id) == id)
        return;
    // A chat may be on screen a moment before it is listed, and the marker glides to a row that is there.
    QMetaObject::invokeMethod(this, &SidebarView::refresh, Qt::QueuedConnection);
}

void SidebarView::refresh() {
    setModel(sidebarModel({.summaries = m_app.chat().summaries(),
                           .openID = m_openID,
                           .answeringID = m_app.chat().generatingID().value_or(QUuid()),
                           .range = m_range,
                           .now = localNow(m_clock),
                           .searchMode = m_app.settings().searchMode,
                           .activeTier = m_app.activeTier()}));
}

void SidebarView::setModel(const SidebarModel &model) {
    m_list->setChats(model.chats, model.openID);
    m_list->setAnswering(model.answeringID);
    m_list->setVisible(model.emptyText.isEmpty());
    m_emptyText->setText(model.emptyText);
    m_emptyText->setVisible(!model.emptyText.isEmpty());
    m_offline->toggle()->setOn(model.isOffline);
    m_offline->setVisible(model.offersSearch);
    m_searchRemark->setVisible(!model.offersSearch);
}

Task<> SidebarView::followDays(std::stop_token stop) {
    while (true) {
        const QDateTime now = localNow(m_clock);
        const std::chrono::milliseconds left(now.msecsTo(now.date().addDays(1).startOfDay()));
        co_await m_clock.sleep(std::min<std::chrono::milliseconds>(left, longestSleep), stop);
        if (stop.stop_requested())
            co_return;
        refresh();
    }
}

void SidebarView::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    const Palette &palette = m_look.palette();
    painter.fillRect(rect(), palette.sidebar);
    painter.fillRect(style::space, m_searchRow->y(), width() - 2 * style::space, style::hairline,
                     palette.hairline);
}
