#include "screens/AttachmentStrip.h"

#include "screens/AttachmentChip.h"
#include "screens/FlowLayout.h"
#include "screens/Look.h"
#include "screens/LookButton.h"
#include "screens/Style.h"

#include <algorithm>

AttachmentStrip::AttachmentStrip(const Look &look, QWidget *parent)
    : QScrollArea(parent),
      m_look(look),
      m_flow(new FlowLayout(style::attachmentGap)) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(true);
    auto *content = new QWidget;
    m_flow->setContentsMargins({});
    content->setLayout(m_flow);
    setWidget(content);
    viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    hide();
}

void AttachmentStrip::setAttachments(const QList<Attachment> &attachments) {
    const auto isWanted = [&](const QUuid &id) {
        return std::any_of(attachments.begin(), attachments.end(),
                           [&](const Attachment &attachment) { return attachment.id == id; });
    };
    for (const QUuid &id : m_chips.keys()) {
        if (!isWanted(id))
            discard(m_chips.take(id));
    }
    for (const Attachment &attachment : attachments) {
        if (!m_chips.contains(attachment.id))
            add(attachment);
    }
    setVisible(!attachments.isEmpty());
    updateGeometry();
}

QSize AttachmentStrip::sizeHint() const {
    return {m_flow->sizeHint().width(), heightForWidth(width())};
}

int AttachmentStrip::heightForWidth(int width) const {
    return std::min(m_flow->heightForWidth(width), style::attachmentsMaximumHeight);
}

void AttachmentStrip::add(const Attachment &attachment) {
    auto *chip = new AttachmentChip(m_look, attachment.name, AttachmentChip::Use::removable, widget());
    chip->setMaximumWidth(style::attachmentWidest);
    QWidget *before = this;
    if (m_flow->count() > 0)
        before = chipAt(m_flow->count() - 1)->removeButton();
    setTabOrder(before, chip->removeButton());
    m_flow->addWidget(chip);
    m_chips.insert(attachment.id, chip);
    connect(chip, &AttachmentChip::removed, this, [this, id = attachment.id] { Q_EMIT removed(id); });
    connect(chip->removeButton(), &LookButton::focusChanged, this,
            [this, chip] { ensureWidgetVisible(chip, 0, 0); });
}

void AttachmentStrip::discard(AttachmentChip *chip) {
    const int place = m_flow->indexOf(chip);
    delete m_flow->takeAt(place);
    // The focus goes on to the next file, before the toolkit sends it elsewhere.
    if (chip->removeButton()->hasFocus() && m_flow->count() == 0)
        Q_EMIT focusLost();
    else if (chip->removeButton()->hasFocus())
        chipAt(std::min(place, m_flow->count() - 1))->removeButton()->setFocus(Qt::TabFocusReason);
    // It may be this chip's own button that was pressed.
    chip->hide();
    chip->deleteLater();
}

AttachmentChip *AttachmentStrip::chipAt(int place) const {
    return static_cast<AttachmentChip *>(m_flow->itemAt(place)->widget());
}
