#pragma once

#include "e2e/RunningProgram.h"
#include "records/Conversation.h"
#include "support/Await.h"
#include "support/TemporaryApplicationFolder.h"

/// The whole program with the demo model installed, on a display of its own, in an application folder of
/// its own.
class WindowFixture : public ::testing::Test {
protected:
    WindowFixture();

    void SetUp() override;

    /// Starts the program and waits for the chat.
    void startProgram();

    /// The same with an engine in whose replies there is no end.
    void startProgramEndless();

    /// Sends a text through the composer.
    void send(const QString &text);

    /// Waits until the assistant has said something.
    bool waitForText();

    AccessibleWindow &window() { return program.window(); }

    /// The only chat on disk that has messages; an empty one if there is none.
    static Conversation savedChat();

    static const QString suggestion;
    TemporaryApplicationFolder folder;
    RunningProgram program{QStringLiteral(PROGRAM_PATH)};
};
