#include "screens/ChatScreen.h"

#include "conversation/Attachments.h"
#include "core/AppState.h"
#include "screens/AttachDialog.h"
#include "screens/BannerColumn.h"
#include "screens/ChatBar.h"
#include "screens/ChatScreenState.h"
#include "screens/ComposerView.h"
#include "screens/EmptyState.h"
#include "screens/FileDrop.h"
#include "screens/LocalFiles.h"
#include "screens/Look.h"
#include "screens/MessageList.h"
#include "screens/PageKeys.h"
#include "screens/RoundButton.h"
#include "screens/SearchHintCard.h"
#include "screens/SpokenNotice.h"
#include "screens/Style.h"
#include "screens/Submission.h"
#include "screens/Toast.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QStackedLayout>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The composer's text takes at most this part of the window's height.
constexpr int composerShare = 3;

/// A widget in the middle, as wide as the column of messages and `outset` more on both sides.
QLayout *inColumn(QWidget *widget, int outset, const QMargins &margins) {
    widget->setMaximumWidth(style::columnWidth + 2 * outset);
    auto *row = new QHBoxLayout;
    row->setContentsMargins(margins);
    row->addWidget(widget);
    return row;
}

} // namespace

ChatScreen::ChatScreen(AppState &app, const Look &look, Clock &clock, QWidget *parent)
    : QWidget(parent),
      m_app(app),
      m_look(look),
      m_bar(new ChatBar(look, this)),
      m_banners(new BannerColumn(look, this)),
      m_empty(new EmptyState(look, this)),
      m_list(new MessageList(look, clock, this)),
      m_hint(new SearchHintCard(look, this)),
      m_composer(new ComposerView(look, this)),
      m_toEnd(new RoundButton(look, Icon::chevron, u"Go to the end"_s, RoundButton::Tone::quiet, this)),
      m_toast(new Toast(look, clock, this)),
      m_notice(new SpokenNotice(this)) {
    build();
    observe();
    refresh();
}

void ChatScreen::build() {
    m_toEnd->setFocusPolicy(Qt::TabFocus);
    m_composer->installEventFilter(this);
    constexpr int margin = style::columnMargin;
    constexpr int reach = style::shadowReach;
    m_middle = new QStackedLayout;
    m_middle->addWidget(m_empty);
    m_middle->addWidget(m_list);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, style::composerBottom - reach);
    column->setSpacing(0);
    column->addWidget(m_bar);
    column->addLayout(inColumn(m_banners, 0, {margin, 0, margin, 0}));
    column->addLayout(m_middle, 1);
    column->addLayout(inColumn(m_hint, 0, {margin, 0, margin, 0}));
    column->addLayout(inColumn(m_composer, reach, {margin - reach, 0, margin - reach, 0}));
}

void ChatScreen::observe() {
    observeChatScreenState(m_app, this, [this] { refresh(); });
    connect(m_banners, &BannerColumn::upgradeAccepted, &m_app, &AppState::acceptUpgrade);
    connect(m_banners, &BannerColumn::upgradeDismissed, &m_app, &AppState::dismissUpgrade);
    connect(m_banners, &BannerColumn::updateDismissed, &m_app, &AppState::dismissUpdate);
    connect(m_banners, &BannerColumn::engineRetried, &m_app, &AppState::resolveModel);
    connect(m_empty, &EmptyState::suggested, this, [this](const QString &text) { submit(text); });
    connect(m_hint, &SearchHintCard::enabled, this, &ChatScreen::enableSearch);
    connect(m_bar, &ChatBar::pagesRequested, this, &ChatScreen::pagesRequested);
    observeRows();
    observeComposer();
}

void ChatScreen::observeRows() {
    ChatController &chat = m_app.chat();
    connect(m_list, &MessageList::followsEndChanged, this, &ChatScreen::offerEnd);
    connect(m_toEnd, &RoundButton::clicked, this, &ChatScreen::goToEnd);
    connect(m_list, &MessageList::copyRequested, this, [this](const QString &text) {
        QGuiApplication::clipboard()->setText(text);
        showToast(u"Copied"_s);
    });
    connect(m_list, &MessageList::regenerateRequested, this, &ChatScreen::regenerate);
    connect(m_list, &MessageList::pageOpened, &chat, &ChatController::openPage);
    connect(m_list, &MessageList::pageRetried, this, &ChatScreen::retryPage);
    connect(m_list, &MessageList::searchAnswered, &chat.consent(), &Consent::resolveSearch);
    connect(m_list, &MessageList::pageAnswered, &chat.consent(), &Consent::resolvePage);
    connect(m_list, &MessageList::memoryAnswered, &chat.consent(), &Consent::resolveMemory);
}

void ChatScreen::observeComposer() {
    connect(m_composer, &ComposerView::textChanged, this, [this](const QString &text) { m_draft = text; });
    connect(m_composer, &ComposerView::sendRequested, this, [this] { submit(); });
    connect(m_composer, &ComposerView::stopRequested, &m_app.chat(), &ChatController::stop);
    connect(m_composer, &ComposerView::speedChosen, this, &ChatScreen::setSpeed);
    connect(m_composer, &ComposerView::thinkModeChosen, this, [this](ThinkMode mode) {
        setThinkMode(mode);
        if (m_app.chat().isGenerating() && mode != ThinkMode::off)
            showToast(u"Think longer mode will be enabled when you send your next message."_s);
    });
    connect(m_composer, &ComposerView::attachRequested, this,
            [this] { openAttachDialog(this, [this](const QStringList &paths) { attach(paths); }); });
    connect(m_composer, &ComposerView::filesPasted, this, &ChatScreen::takeFiles);
    auto *drop = new FileDrop(this);
    connect(drop, &FileDrop::hovered, m_composer, &ComposerView::setIsTarget);
    connect(drop, &FileDrop::dropped, this, &ChatScreen::takeFiles);
    connect(m_composer, &ComposerView::attachmentRemoved, this, &ChatScreen::removeAttachment);
}

void ChatScreen::submit(const std::optional<QString> &text) {
    const QList<Attachment> attachments = text ? QList<Attachment>() : m_attachments;
    const Submission result = submission(text.value_or(m_draft), attachments, m_app.chat().isGenerating());
    if (result.kind == Submission::Kind::refuse)
        return showToast(result.text);
    clearDraft();
    m_app.chat().send(result.text, m_thinkMode == ThinkMode::off ? Thinking::off : Thinking::on, attachments);
    if (m_thinkMode == ThinkMode::nextReply)
        setThinkMode(ThinkMode::off);
    focusComposer();
}

void ChatScreen::clearDraft() {
    m_draft.clear();
    m_composer->setText(m_draft);
    setAttachments({});
}

void ChatScreen::takeFiles(const QStringList &paths) {
    const QStringList files = attachableFiles(paths);
    attach(files);
    if (files.size() < paths.size())
        showToast(u"Only text files can be attached."_s);
}

void ChatScreen::attach(const QStringList &paths) {
    QList<Attachment> attachments = m_attachments;
    for (const QString &path : paths) {
        if (const std::optional<Attachment> attachment = importAttachment(path))
            attachments.append(*attachment);
    }
    setAttachments(attachments);
    focusComposer();
}

void ChatScreen::setAttachments(const QList<Attachment> &attachments) {
    m_attachments = attachments;
    m_composer->setAttachments(attachments);
}

void ChatScreen::removeAttachment(const QUuid &id) {
    QList<Attachment> attachments = m_attachments;
    attachments.removeIf([&id](const Attachment &attachment) { return attachment.id == id; });
    setAttachments(attachments);
}

void ChatScreen::setSpeed(ResponseSpeed speed) {
    m_app.changeSetting(&Settings::responseSpeed, speed);
}

void ChatScreen::setThinkMode(ThinkMode mode) {
    m_thinkMode = mode;
    m_composer->setThinkMode(mode);
}

void ChatScreen::regenerate() {
    m_app.chat().regenerate();
    focusComposer();
}

void ChatScreen::retryPage() {
    if (m_app.chat().isGenerating())
        return showToast(submission({}, {}, true).text);
    m_app.chat().retryPage();
    focusComposer();
}

void ChatScreen::enableSearch() {
    m_app.changeSetting(&Settings::searchMode, SearchMode::always);
    m_app.chat().dismissSearchHint();
    regenerate();
}

void ChatScreen::offerEnd() {
    // Only while something is written or asked there: a chat that rests is read at leisure.
    const bool isAwaited =
        !m_model.rows.isEmpty() && (m_model.rows.last().isStreaming || m_model.rows.last().extras.asks());
    m_toEnd->setVisible(isAwaited && !m_list->followsEnd());
    // The messages come to the front when they take the place of the empty state.
    m_toEnd->raise();
}

void ChatScreen::tellEnd(const ChatScreenModel &before) {
    const MessageRowModel last = m_model.rows.value(m_model.rows.size() - 1);
    const MessageRowModel lastBefore = before.rows.value(before.rows.size() - 1);
    if (before.conversationID != m_model.conversationID || lastBefore.id != last.id)
        m_notice->say({});
    else if (lastBefore.isStreaming && last.hasActions() && !last.extras.asks())
        m_notice->say(u"The reply has ended."_s);
}

void ChatScreen::goToEnd() {
    focusComposer();
    m_list->goToEnd();
}

void ChatScreen::showToast(const QString &text) {
    m_toast->showText(text);
}

void ChatScreen::focusComposer() {
    m_composer->focusText();
}

void ChatScreen::refresh() {
    const QUuid before = m_model.conversationID;
    setModel(chatScreenModel(chatScreenState(m_app)));
    if (m_model.conversationID == before)
        return;
    // Only where everything has been deleted there is no chat.
    if (m_model.conversationID.isNull()) {
        clearDraft();
        setThinkMode(ThinkMode::off);
    }
    Q_EMIT chatChanged();
}

void ChatScreen::setModel(const ChatScreenModel &model) {
    const ChatScreenModel before = std::exchange(m_model, model);
    m_bar->setTitle(model.title);
    m_bar->setLamp(model.lamp);
    m_banners->setModel(model);
    m_empty->setHint(model.emptyHint);
    m_middle->setCurrentIndex(model.showsEmptyState ? 0 : 1);
    m_list->setRows(model.conversationID, model.rows);
    offerEnd();
    tellEnd(before);
    m_hint->setVisible(model.showsSearchHint);
    m_composer->setSpeed(model.speed);
    m_composer->setAction(model.isGenerating ? ComposerView::Action::stop : ComposerView::Action::send);
}

void ChatScreen::resizeEvent(QResizeEvent *) {
    m_composer->setMaximumTextHeight(height() / composerShare);
}

void ChatScreen::keyPressEvent(QKeyEvent *event) {
    if (isPageKey(event->key()))
        m_list->movePages(event->key() == Qt::Key_PageUp ? -1 : 1);
    else
        QWidget::keyPressEvent(event);
}

void ChatScreen::showEvent(QShowEvent *event) {
    QWidget::showEvent(event);
    focusComposer();
}

bool ChatScreen::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::Move || event->type() == QEvent::Resize)
        placeOverComposer();
    return QWidget::eventFilter(watched, event);
}

void ChatScreen::placeOverComposer() {
    constexpr int reach = style::shadowReach;
    const QRect box = m_composer->geometry().adjusted(reach, reach, -reach, -reach);
    m_toast->setAnchor({width() / 2, box.top() - style::space});
    QRect place(QPoint(), m_toEnd->sizeHint());
    place.moveBottomRight(box.topRight() - QPoint(0, style::spaceTiny));
    m_toEnd->setGeometry(place);
}
