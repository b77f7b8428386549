#pragma once

#include "screens/ChatScreenModel.h"
#include "screens/ThinkMode.h"

#include <QWidget>

class AppState;
class BannerColumn;
class ChatBar;
class Clock;
class ComposerView;
class EmptyState;
class Look;
class MessageList;
class SearchHintCard;
class QStackedLayout;
class RoundButton;
class SpokenNotice;
class Toast;

/// The chat: the bar, banners where something is wrong or on offer, the messages or the empty state, and the
/// composer. It holds only what is being written, the files to go with it, and whether to think before the
/// answer; everything else it observes.
class ChatScreen : public QWidget {
    Q_OBJECT

public:
    /// All three must outlive this object.
    ChatScreen(AppState &app, const Look &look, Clock &clock, QWidget *parent = nullptr);

    /// Sends the text, or the draft where there is none, or tells in a toast why not.
    void submit(const std::optional<QString> &text = std::nullopt);

    void showToast(const QString &text);
    void focusComposer();

    const ChatScreenModel &model() const { return m_model; }
    const QString &draft() const { return m_draft; }
    ThinkMode thinkMode() const { return m_thinkMode; }
    const QList<Attachment> &attachments() const { return m_attachments; }

    /// Adds those of the files that have text to the next message, in this order; of others nothing is said.
    void attach(const QStringList &paths);

    /// Shows that state.
    void setModel(const ChatScreenModel &model);

Q_SIGNALS:
    /// Another chat is on screen, from wherever that was asked for.
    void chatChanged();
    /// The person wants to see the saved pages.
    void pagesRequested();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void showEvent(QShowEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void build();
    void observe();
    void observeComposer();
    void observeRows();
    void enableSearch();
    void retryPage();
    void refresh();
    void regenerate();
    void setSpeed(ResponseSpeed speed);
    void setThinkMode(ThinkMode mode);
    void setAttachments(const QList<Attachment> &attachments);
    void removeAttachment(const QUuid &id);
    void takeFiles(const QStringList &paths);
    void clearDraft();
    void goToEnd();
    void offerEnd();
    void tellEnd(const ChatScreenModel &before);
    void placeOverComposer();

    AppState &m_app;
    const Look &m_look;
    ChatScreenModel m_model;
    QString m_draft;
    ThinkMode m_thinkMode = ThinkMode::off;
    QList<Attachment> m_attachments;
    ChatBar *m_bar;
    BannerColumn *m_banners;
    EmptyState *m_empty;
    MessageList *m_list;
    SearchHintCard *m_hint;
    QStackedLayout *m_middle = nullptr;
    ComposerView *m_composer;
    RoundButton *m_toEnd;
    Toast *m_toast;
    SpokenNotice *m_notice;
};
