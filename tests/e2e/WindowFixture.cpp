#include "e2e/WindowFixture.h"

#include "e2e/EndlessEngine.h"
#include "records/ChatStore.h"
#include "support/DemoModel.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

const QString WindowFixture::suggestion =
    u"Write a friendly note thanking a coworker for helping me hit a deadline."_s;

WindowFixture::WindowFixture() {
    installDemoModel();
}

void WindowFixture::SetUp() {
    const QFileInfo server(qEnvironmentVariable("OSTRELIN_LLAMA_SERVER"));
    ASSERT_TRUE(server.isExecutable()) << "no engine at OSTRELIN_LLAMA_SERVER; scripts/engine brings it";
}

void WindowFixture::startProgram() {
    ASSERT_TRUE(program.start());
    ASSERT_TRUE(program.waitUntilReady()) << "no chat came up: " << program.output().toStdString();
}

void WindowFixture::startProgramEndless() {
    const EndlessEngine endless;
    startProgram();
}

void WindowFixture::send(const QString &text) {
    ASSERT_TRUE(window().setText(u"Message Ostrelin"_s, text));
    ASSERT_TRUE(window().press(u"Send message"_s));
}

bool WindowFixture::waitForText() {
    return eventually([this] { return !window().said(u"Ostrelin"_s).value(0).isEmpty(); }, 30'000);
}

Conversation WindowFixture::savedChat() {
    QList<Conversation> chats;
    for (const ConversationSummary &summary : ChatStore().list()) {
        const auto chat = ChatStore().load(summary.id);
        if (chat && !chat->messages.isEmpty())
            chats.append(*chat);
    }
    EXPECT_EQ(chats.size(), 1);
    return chats.value(0);
}
