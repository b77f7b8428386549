#pragma once

#include "records/Conversation.h"
#include "records/Settings.h"
#include "screens/ThinkMode.h"

#include <QWidget>

class AttachmentStrip;
class ComposerTextView;
class Look;
class QLayout;
class RoundButton;
class SpeedChip;
class SymbolButton;
class ThinkModeChip;

/// The box at the bottom of the chat: the files that wait to be sent, the field, the chips for speed and
/// thinking, and the buttons that attach, send and stop. It grows with what is written, up to a share of the
/// window, and then scrolls. Escape stops a reply. It shows what it is given and tells what is pressed; the
/// screen decides.
class ComposerView : public QWidget {
    Q_OBJECT

public:
    enum class Action { send, stop };

    /// `look` must outlive this object.
    explicit ComposerView(const Look &look, QWidget *parent = nullptr);

    /// Shows this text; the cursor doesn't move if it is there already.
    void setText(const QString &text);

    /// Which of its two actions the button offers.
    void setAction(Action action);

    void setSpeed(ResponseSpeed speed);
    void setThinkMode(ThinkMode mode);
    void setAttachments(const QList<Attachment> &attachments);

    /// Shows that files can be dropped here, and around.
    void setIsTarget(bool isTarget);

    /// The most height that the field may take.
    void setMaximumTextHeight(int height);

    void focusText();

Q_SIGNALS:
    void textChanged(const QString &text);
    void sendRequested();
    void stopRequested();
    void speedChosen(ResponseSpeed speed);
    void thinkModeChosen(ThinkMode mode);
    void attachRequested();
    /// The person has pasted these files.
    void filesPasted(const QStringList &paths);
    void attachmentRemoved(const QUuid &id);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QLayout *makeTools();
    void tell();
    void fitText();

    const Look &m_look;
    AttachmentStrip *m_attachments;
    ComposerTextView *m_text;
    SpeedChip *m_speed;
    ThinkModeChip *m_think;
    SymbolButton *m_attach;
    RoundButton *m_send;
    RoundButton *m_stop;
    int m_maximumTextHeight = 0;
    bool m_isTarget = false;
};
