#include "e2e/WindowFixture.h"

#include "core/DemoModel.h"
#include "records/ChatStore.h"
#include "records/Folders.h"
#include "records/Settings.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

const QString WindowFixture::suggestion =
    u"Write a friendly note thanking a coworker for helping me hit a deadline."_s;

WindowFixture::WindowFixture() {
    ensureFolders();
}

void WindowFixture::SetUp() {
    const QFileInfo server(qEnvironmentVariable("OSTRELIN_LLAMA_SERVER"));
    ASSERT_TRUE(server.isExecutable()) << "no engine at OSTRELIN_LLAMA_SERVER; scripts/engine brings it";
}

void WindowFixture::startProgram() {
    ASSERT_TRUE(program.start());
    ASSERT_TRUE(program.waitUntilReady()) << "no chat came up: " << program.output().toStdString();
}

void WindowFixture::installBabblingModel() {
    const DemoModel demo = demoModel(QStringLiteral(RESOURCES_FOLDER));
    ASSERT_TRUE(demo.tier);
    ASSERT_TRUE(QFile::link(demo.path, modelsFolder() + u'/' + demo.tier->filename));
    // At such a heat any token is as likely as any other, the one that ends the reply too.
    const Sampling hot{.temperature = 1000, .topP = 1, .topK = 0, .minP = 0, .presencePenalty = 0};
    Settings settings;
    settings.installed = InstalledModel{.tierId = demo.tier->id,
                                        .displayName = demo.tier->displayName,
                                        .filename = demo.tier->filename,
                                        .contextLength = demo.tier->contextLength,
                                        .sampling = hot,
                                        .thinkingSampling = hot,
                                        .supportsTools = false,
                                        .license = demo.tier->license,
                                        .sizeBytes = demo.tier->sizeBytes};
    saveSettings(settings);
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
