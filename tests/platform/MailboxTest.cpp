#include "platform/Mailbox.h"

#include "support/Await.h"

#include <QCoreApplication>
#include <QThread>

#include <thread>
#include <vector>

TEST(Mailbox, theMainOneBelongsToTheMainThreadWhoeverAsksFirst) {
    std::thread([] { Mailbox::main(); }).join();
    EXPECT_EQ(Mailbox::main().thread(), QCoreApplication::instance()->thread());
}

TEST(Mailbox, jobsRunLaterAndInOrder) {
    Mailbox mailbox;
    QList<int> ran;
    for (int job = 0; job < 3; ++job)
        mailbox.post([&ran, job] { ran.append(job); });
    EXPECT_TRUE(ran.isEmpty());
    QCoreApplication::processEvents();
    EXPECT_EQ(ran, (QList{0, 1, 2}));
}

TEST(Mailbox, aJobMayPostAnother) {
    Mailbox mailbox;
    int depth = 0;
    std::function<void()> again = [&] {
        if (++depth < 5)
            mailbox.post(again);
    };
    mailbox.post(again);
    EXPECT_TRUE(eventually([&] { return depth == 5; }));
}

TEST(Mailbox, jobsOfAMailboxThatIsGoneAreForgotten) {
    bool ran = false;
    {
        Mailbox mailbox;
        mailbox.post([&] { ran = true; });
    }
    QCoreApplication::processEvents();
    EXPECT_FALSE(ran);
}

TEST(Mailbox, manyThreadsLoseNoJob) {
    Mailbox mailbox;
    int ran = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 8; ++thread) {
        threads.emplace_back([&] {
            for (int job = 0; job < 1000; ++job)
                mailbox.post([&] { ++ran; });
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_TRUE(eventually([&] { return ran == 8000; }));
}
