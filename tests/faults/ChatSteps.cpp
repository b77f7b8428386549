/// The steps of a run that a person does in the window.

#include "faults/FaultRun.h"
#include "faults/Finding.h"
#include "records/Folders.h"

#include <QDir>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int promptly = 5000;
constexpr int replyTime = 60'000;
const QString composer = u"Message Ostrelin"_s;

/// The ids in the names of the files of chats, whatever is in those.
QSet<QUuid> chatIDs() {
    QSet<QUuid> ids;
    for (const QString &name : QDir(chatsFolder()).entryList({u"*.json"_s}, QDir::Files))
        ids.insert(QUuid(QFileInfo(name).baseName()));
    return ids;
}

} // namespace

/// A chat in which a reply has begun that doesn't end by itself.
bool FaultRun::startReply() {
    if (m_replies != PatientProgram::Replies::neverEnd) {
        m_patient.kill();
        startAgainWith(PatientProgram::Replies::neverEnd);
    }
    bringToOrder();
    send();
    return PatientProgram::waitFor([this] { return m_patient.buttons().contains(u"Stop generating"_s); },
                                   promptly);
}

bool FaultRun::pressIfShown(const QString &button) {
    const bool isPressed = m_patient.buttons().contains(button) && m_patient.window().press(button);
    if (!isPressed)
        note(u"there is no \""_s + button + u'"');
    return isPressed;
}

QString FaultRun::question() const {
    return u"Question %1: what grows in the shade?"_s.arg(m_number);
}

bool FaultRun::send() {
    const QString question = this->question();
    if (!m_patient.buttons().contains(u"Send message"_s) || !m_patient.window().setText(composer, question) ||
        !pressIfShown(u"Send message"_s))
        return false;
    if (!canSave())
        return true;
    require(PatientProgram::waitFor([&] { return KeptFiles::hasQuestion(question); }, promptly),
            u"a question isn't on disk"_s);
    require(PatientProgram::waitFor([&] { return KeptFiles::listsQuestion(question); }, promptly),
            u"a chat with a new question isn't listed"_s);
    QTest::qWait(m_dice.upTo(500));
    return true;
}

bool FaultRun::askAndWait() {
    bringToOrder();
    pressIfShown(u"New Chat"_s);
    send();
    const auto reply = [this] { return m_patient.window().said(u"Ostrelin"_s).value(0); };
    require(PatientProgram::waitFor([&] { return !reply().isEmpty(); }, replyTime), u"no reply comes"_s);
    if (m_replies == PatientProgram::Replies::neverEnd)
        stopReply();
    require(m_patient.program().waitForReply(replyTime), u"the reply doesn't end"_s);
    require(reply() != u"Ostrelin couldn't complete that reply."_s &&
                reply() != u"Ostrelin isn't ready yet."_s,
            u"the reply has failed"_s);
    require(PatientProgram::waitFor([this] { return KeptFiles::hasReplyTo(question()); }, promptly),
            u"a reply isn't on disk"_s);
    return true;
}

bool FaultRun::stopReply() {
    if (!pressIfShown(u"Stop generating"_s))
        return false;
    require(PatientProgram::waitFor([this] { return !m_patient.buttons().contains(u"Stop generating"_s); },
                                    promptly),
            u"a reply goes on after it was stopped"_s);
    return true;
}

bool FaultRun::newChat() {
    return pressIfShown(u"New Chat"_s);
}

/// The title of a chat as the sidebar shows it; empty if there is none.
QString FaultRun::someTitle() {
    const QStringList shown = m_patient.window().namesOfControls(AccessibleRole::listItem);
    if (shown.isEmpty()) {
        note(u"there is no chat"_s);
        return {};
    }
    return m_dice.pick(shown);
}

bool FaultRun::switchChat() {
    const QString title = someTitle();
    return !title.isEmpty() && m_patient.window().press(title, AccessibleRole::listItem);
}

bool FaultRun::deleteChat() {
    constexpr int deleteEntry = 2;
    const QString title = someTitle();
    const QSet<QUuid> before = chatIDs();
    if (title.isEmpty() || !m_patient.program().chooseFromMenu(title, deleteEntry))
        return false;
    QSet<QUuid> gone;
    PatientProgram::waitFor([&] { return !(gone = QSet(before).subtract(chatIDs())).isEmpty(); }, promptly);
    require(gone.size() <= 1, u"more than one chat was deleted"_s);
    if (gone.isEmpty())
        note(u"nothing was deleted"_s);
    for (const QUuid &chat : gone)
        m_patient.files().letGo(chat);
    return !gone.isEmpty();
}

bool FaultRun::regenerate() {
    constexpr int patience = 2000;
    const auto isOffered = [this] { return m_patient.buttons().contains(u"Regenerate"_s); };
    if (m_patient.buttons().contains(u"Stop generating"_s))
        m_patient.window().press(u"Stop generating"_s);
    PatientProgram::waitFor(isOffered, patience);
    m_patient.check();
    const QStringList questions = m_patient.files().questions();
    if (!pressIfShown(u"Regenerate"_s))
        return false;
    m_patient.files().letTailGo();
    PatientProgram::waitFor([&] { return !isOffered(); }, promptly);
    const auto isLost = [](const QString &question) { return !KeptFiles::hasQuestion(question); };
    require(!canSave() || std::none_of(questions.begin(), questions.end(), isLost),
            u"a question that is asked again isn't on disk"_s);
    return true;
}

bool FaultRun::toggleSetting() {
    return m_patient.window().press(u"Offline Mode"_s, AccessibleRole::checkBox);
}

bool FaultRun::canSave() {
    return !m_patient.disk().isFull() && !m_patient.files().hasFolders();
}

/// Something that writes files, and a moment in which it may be in the midst of that.
void FaultRun::setToWork() {
    constexpr int moment = 300;
    const QList<Act> works{&FaultRun::newChat, &FaultRun::switchChat, &FaultRun::toggleSetting,
                           &FaultRun::press};
    if (!m_dice.oneIn(4))
        (this->*m_dice.pick(works))();
    QTest::qWait(m_dice.upTo(moment));
}

/// One press that begins or ends a turn; what comes of it isn't waited for.
bool FaultRun::press() {
    const QString button = m_dice.pick(QStringList{u"Send message"_s, u"Stop generating"_s, u"Regenerate"_s});
    m_patient.window().setText(composer, u"Question %1: and in the sun?"_s.arg(m_number));
    if (!pressIfShown(button))
        return false;
    if (button == u"Regenerate"_s)
        m_patient.files().letTailGo();
    return true;
}
