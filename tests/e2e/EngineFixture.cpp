#include "e2e/EngineFixture.h"

#include "e2e/EndlessEngine.h"
#include "platform/AtomicFile.h"
#include "records/Folders.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

EngineFixture::EngineFixture() : chat(std::make_unique<ChatController>(&host, Clock::system())) {
    ensureFolders();
    box.setPidFile(enginePidFile());
    host.tier = demoTier();
    host.url.reset();
    // The same at each time: what the model finds most likely.
    host.tier->sampling.temperature = 0;
    host.tier->thinkingSampling.temperature = 0;
}

EngineFixture::~EngineFixture() {
    chat->stop();
    engine.stop();
}

void EngineFixture::SetUp() {
    const QFileInfo server(qEnvironmentVariable("OSTRELIN_LLAMA_SERVER"));
    ASSERT_TRUE(server.isExecutable())
        << "there is no engine at OSTRELIN_LLAMA_SERVER; scripts/engine brings it";
}

void EngineFixture::start(qint64 contextLength) {
    await(engine.start(demoModelPath(), contextLength, {}));
    host.url = engine.baseURL();
    host.key = engine.apiKey();
}

void EngineFixture::say(const QString &text) {
    chat->send(text);
    ASSERT_TRUE(eventually([this] { return !chat->isGenerating(); }, 90'000)) << "the turn didn't end";
}

void EngineFixture::startEndless() {
    const EndlessEngine endless;
    start();
}

void EngineFixture::sayUntilText(const QString &text) {
    chat->send(text);
    const auto hasText = [this] {
        return messages().last().role == Role::assistant && !messages().last().content.isEmpty();
    };
    ASSERT_TRUE(eventually([&] { return !chat->isGenerating() || hasText(); }, 30'000));
    ASSERT_TRUE(chat->isGenerating()) << "the reply was over before it could be seen";
}

Conversation EngineFixture::saved() const {
    const auto conversation = ChatStore().load(chat->conversation()->id);
    EXPECT_TRUE(conversation) << "the chat isn't on disk";
    return conversation.value_or(Conversation());
}

qint64 EngineFixture::pid() const {
    return readFile(enginePidFile()).value_or("0").toLongLong();
}
