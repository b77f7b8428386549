#pragma once

#include "records/Conversation.h"

#include <QHash>
#include <QScrollArea>

class AttachmentChip;
class FlowLayout;
class Look;

/// The files that wait to be sent, as chips over as many lines as they need; beyond a few lines they scroll.
/// It isn't there while there are none.
class AttachmentStrip : public QScrollArea {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    explicit AttachmentStrip(const Look &look, QWidget *parent = nullptr);

    /// Shows these files. The chips of those that were there already stay.
    void setAttachments(const QList<Attachment> &attachments);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {0, 0}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

Q_SIGNALS:
    /// The person takes a file away.
    void removed(const QUuid &id);
    /// The last file has gone, and the keyboard's focus was on it.
    void focusLost();

private:
    void add(const Attachment &attachment);
    void discard(AttachmentChip *chip);
    AttachmentChip *chipAt(int place) const;

    const Look &m_look;
    FlowLayout *m_flow;
    QHash<QUuid, AttachmentChip *> m_chips;
};
