#pragma once

#include "conversation/ChatHost.h"
#include "records/Memory.h"

/// The surroundings of a chat, as a test wants them.
class FakeHost : public ChatHost {
public:
    FakeHost();

    const Settings &settings() const override { return fakeSettings; }
    void saveSettings(const Settings &settings) override { fakeSettings = settings; }
    std::optional<ModelTier> activeTier() const override { return tier; }
    QString memory() const override { return memoryText; }
    void rememberFact(const QString &fact) override {
        memoryText = appendingMemoryFact(readMemory(), fact);
        writeMemory(memoryText);
    }
    std::optional<QUrl> engineURL() const override { return url; }
    QString engineKey() const override { return key; }

    Settings fakeSettings;
    std::optional<ModelTier> tier;
    QString memoryText;
    std::optional<QUrl> url;
    QString key = QStringLiteral("secret");
};
