#pragma once

#include "pages/drawing/Spoken.h"
#include "screens/MessageRowModel.h"
#include "screens/TextView.h"

#include <QWidget>

class ActionLine;
class AttachmentChip;
class Clock;
class Look;
class ReplyExtrasView;
class ThinkingDisclosure;
class TypingIndicator;

/// One message of a chat, a column of parts: the person's files and their words in a bubble, or the
/// assistant's reply on the background. The widget is larger than the message by style::rowOutset on every
/// side.
class MessageRow : public QWidget, public Spoken {
    Q_OBJECT

public:
    /// `look` and `clock` must outlive this object.
    MessageRow(const Look &look, Clock &clock, const MessageRowModel &model, QWidget *parent = nullptr);
    ~MessageRow() override;

    const MessageRowModel &model() const { return m_model; }

    /// Shows another state of the same message. Only what differs is touched.
    void setModel(const MessageRowModel &model);

    /// Arranges the row in that width, and gives the height that it takes there.
    int layIn(int width);

    /// Where what stood at that height before the last layIn() stands best now, so that a reader who had it
    /// at the edge of the sight doesn't lose the place. Both count from the row's top.
    int placeNow(int before) const;

    /// Whether the pointer is over the row. Only who moves the row can tell: below a pointer that rests, it
    /// comes and goes without an event.
    void setHovering(bool isHovering);

    /// The message's text; nothing while there is none.
    SelectableWidget *textView() const { return m_text; }

    /// What the model thought before its reply; nothing in other rows.
    ThinkingDisclosure *thinkingDisclosure() const { return m_thinking; }

    /// What belongs to a reply beside its words; nothing in other rows.
    ReplyExtrasView *extrasView() const { return m_extras; }

    /// The line below a reply; nothing in other rows.
    ActionLine *actionLine() const { return m_actions; }

    QAccessible::Role spokenRole() const override { return QAccessible::ListItem; }
    QString spokenName() const override;

    /// What the keyboard comes to first; nothing if there is nothing in the row.
    QWidget *entry() const;

    /// True while the keyboard is in the row.
    bool showsFocus() const;

Q_SIGNALS:
    /// layIn() gives another height than before.
    void heightChanged();
    /// The caret stands there now, in this widget's coordinates.
    void caretMoved(const QRect &caret);
    /// The person wants to go on to the row before or after.
    void left(TextView::Edge edge);
    void copyRequested();
    void regenerateRequested();
    void pageOpened(const PageSnapshot &page);
    void pageRetried();
    void searchAnswered(PermissionChoice choice);
    void pageAnswered(bool isAccepted);
    void memoryAnswered(bool isAccepted);
    /// The pointer has come to the row, or gone.
    void pointerCrossed();

protected:
    void paintEvent(QPaintEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    /// Leads through the parts of the row before it leads out.
    bool focusNextPrevChild(bool next) override;

private:
    /// How far what the model thought reaches down, with the space after it, and the whole row.
    struct Outline {
        int thinking = 0;
        int whole = 0;
    };

    void showAttachments();
    void showThinking();
    void showText();
    SelectableWidget *newText();
    void showTyping();
    void showExtras();
    void showActions();
    void takeFocusFromActions();
    QList<QWidget *> focusStops() const;
    void followFocus();
    void attend();
    int layQuestion(int width);
    int layBubble(int top, int width);
    int layParts(int width);

    const Look &m_look;
    Clock &m_clock;
    MessageRowModel m_model;
    Outline m_outline;
    Outline m_outlineBefore;
    QList<AttachmentChip *> m_attachments;
    ThinkingDisclosure *m_thinking = nullptr;
    SelectableWidget *m_text = nullptr;
    TypingIndicator *m_typing = nullptr;
    ReplyExtrasView *m_extras = nullptr;
    ActionLine *m_actions = nullptr;
    bool m_isHovering = false;
};
