#include "screens/SpokenNotice.h"

SpokenNotice::SpokenNotice(QWidget *parent) : QWidget(parent) {
    Spoken::install();
    setAttribute(Qt::WA_TransparentForMouseEvents);
    // What has no size at all isn't taken for something that shows.
    resize(1, 1);
    hide();
}

void SpokenNotice::say(const QString &notice) {
    m_notice = notice;
    // A screen reader speaks a notification that begins to show.
    hide();
    setVisible(!notice.isEmpty());
}
