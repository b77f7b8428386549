#include "records/ChatStore.h"

#include <QCoreApplication>

#include <cstdio>
#include <random>

#include <unistd.h>

// Saves chats of all sizes until it is killed or the test that started it is gone. Its first save done,
// it says so.
int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    const ChatStore store;
    std::mt19937 random(std::random_device{}());
    QList<Conversation> chats(5);
    for (qsizetype index = 0; index < chats.size(); ++index)
        chats[index].id = QUuid(static_cast<uint>(index), 1, 2, 3, 4, 5, 6, 7, 8, 9, 10);
    const pid_t test = getppid();
    for (bool first = true; getppid() == test; first = false) {
        Conversation &chat = chats[static_cast<qsizetype>(random() % chats.size())];
        chat.createdAt = chat.updatedAt = QDateTime::currentDateTimeUtc();
        chat.messages = {Message()};
        chat.messages.first().content = QString(static_cast<qsizetype>(random() % 300000), QChar(u'a'));
        store.save(chat);
        if (first) {
            std::puts("saving");
            std::fflush(stdout);
        }
    }
}
