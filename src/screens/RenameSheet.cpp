#include "screens/RenameSheet.h"

#include "screens/TextField.h"

using namespace Qt::StringLiterals;

RenameSheet::RenameSheet(const Look &look, QWidget *parent)
    : Sheet(look, u"Rename"_s, parent),
      m_title(new TextField(look, u"Title"_s)) {
    addHeading(u"Rename"_s);
    addField(u"Title"_s, m_title);
    const auto close = [this] { setShown(false); };
    connect(addButton(u"Cancel"_s), &WordButton::clicked, this, close);
    connect(addButton(u"Save"_s, WordButton::Tone::loud), &WordButton::clicked, this, &RenameSheet::save);
    connect(m_title, &QLineEdit::returnPressed, this, &RenameSheet::save);
    connect(this, &Sheet::escaped, this, close);
}

void RenameSheet::open(const ConversationSummary &chat) {
    m_id = chat.id;
    m_title->setText(chat.title);
    m_before = m_title->text().trimmed();
    m_title->selectAll();
    setShown(true);
}

void RenameSheet::save() {
    setShown(false);
    const QString title = m_title->text().trimmed();
    if (!title.isEmpty() && title != m_before)
        Q_EMIT renamed(m_id, title);
}
