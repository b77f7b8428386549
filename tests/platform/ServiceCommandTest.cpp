#include "platform/ServiceCommand.h"

#include "support/RecordingCommand.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(ServiceCommand, itIsRunWithItsArgumentsAndWaitedFor) {
    const RecordingCommand program(u"keeper"_s);
    ServiceCommand command(program.path());
    command.run({u"one"_s, u"a b $HOME \"c\" *"_s});
    EXPECT_EQ(program.calls(), (QList<QStringList>{{u"one"_s, u"a b $HOME \"c\" *"_s}}));
    command.run({u"two"_s});
    EXPECT_EQ(program.calls().size(), 2);
}

TEST(ServiceCommand, howItEndsDoesNotMatter) {
    for (const char *then : {"exit 1", "kill -9 $$", "yes | head -c 1000000; yes | head -c 1000000 >&2"}) {
        const RecordingCommand program(u"keeper"_s, then);
        ServiceCommand command(program.path());
        command.run({u"one"_s});
        command.run({u"two"_s});
        EXPECT_EQ(program.calls().size(), 2) << then;
    }
}

TEST(ServiceCommand, oneThatHangsIsLeftAfterAWhileAndNotTriedAgain) {
    const RecordingCommand program(u"keeper"_s, "exec sleep 600");
    ServiceCommand command(program.path(), std::chrono::milliseconds(500));
    QElapsedTimer timer;
    timer.start();
    for (int call = 0; call < 20; ++call)
        command.run({QString::number(call)});
    EXPECT_EQ(program.calls(), (QList<QStringList>{{u"0"_s}}));
    EXPECT_LT(timer.elapsed(), 600'000);
}

TEST(ServiceCommand, oneThatIsNotThereIsSilent) {
    ServiceCommand(u"/nowhere/keeper"_s).run({u"one"_s});
    ServiceCommand(QString()).run({u"one"_s});
}
