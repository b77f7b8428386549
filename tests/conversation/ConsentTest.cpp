#include "conversation/Consent.h"

#include "platform/TaskHandle.h"
#include "support/Await.h"

#include <QSignalSpy>

#include <memory>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class ConsentTest : public ::testing::Test {
protected:
    std::unique_ptr<Consent> consent = std::make_unique<Consent>();
    std::stop_source stop;
    const QUuid message = QUuid::createUuid();
};

} // namespace

TEST_F(ConsentTest, nothingIsAskedAtFirstAndAnAnswerThenDoesNothing) {
    const QSignalSpy changes(consent.get(), &Consent::pendingPermissionChanged);
    EXPECT_FALSE(consent->pendingPermission());
    EXPECT_FALSE(consent->pendingPageOffer());
    EXPECT_FALSE(consent->pendingMemory());
    consent->resolveSearch(PermissionChoice::allow);
    consent->resolvePage(true);
    consent->resolveMemory(true);
    consent->refuseAll();
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(ConsentTest, aSearchWaitsForItsAnswer) {
    for (const auto choice : {PermissionChoice::allow, PermissionChoice::always, PermissionChoice::deny}) {
        const QSignalSpy changes(consent.get(), &Consent::pendingPermissionChanged);
        auto answer = consent->ask(u"tea"_s, message, stop.get_token());
        ASSERT_TRUE(consent->pendingPermission());
        EXPECT_EQ(consent->pendingPermission()->query, u"tea"_s);
        EXPECT_EQ(consent->pendingPermission()->messageID, message);
        EXPECT_FALSE(consent->pendingPermission()->id.isNull());
        letPass(20);
        EXPECT_FALSE(answer.isReady());
        consent->resolveSearch(choice);
        EXPECT_FALSE(consent->pendingPermission());
        EXPECT_EQ(await(std::move(answer)), choice);
        EXPECT_EQ(changes.count(), 2);
    }
}

TEST_F(ConsentTest, aPageAndAMemoryWaitForTheirs) {
    for (const bool isAccepted : {true, false}) {
        auto page = consent->askForPage(message, stop.get_token());
        auto memory = consent->askForMemory(u"Has a dog"_s, message, stop.get_token());
        EXPECT_EQ(consent->pendingPageOffer()->messageID, message);
        EXPECT_EQ(consent->pendingMemory()->fact, u"Has a dog"_s);
        consent->resolvePage(isAccepted);
        EXPECT_FALSE(consent->pendingPageOffer());
        EXPECT_TRUE(consent->pendingMemory()) << "each is answered by itself";
        consent->resolveMemory(isAccepted);
        EXPECT_EQ(await(std::move(page)), isAccepted);
        EXPECT_EQ(await(std::move(memory)), isAccepted);
    }
}

TEST_F(ConsentTest, everyCardIsAnother) {
    auto first = consent->askForPage(message, stop.get_token());
    const QUuid id = consent->pendingPageOffer()->id;
    consent->resolvePage(true);
    await(std::move(first));
    auto second = consent->askForPage(message, stop.get_token());
    EXPECT_NE(consent->pendingPageOffer()->id, id);
    consent->resolvePage(true);
    await(std::move(second));
}

TEST_F(ConsentTest, theFirstOfTwoAnswersCounts) {
    auto answer = consent->ask(u"tea"_s, message, stop.get_token());
    consent->resolveSearch(PermissionChoice::deny);
    consent->resolveSearch(PermissionChoice::allow);
    EXPECT_EQ(await(std::move(answer)), PermissionChoice::deny);
}

TEST_F(ConsentTest, aStopBeatsAYes) {
    auto answer = consent->ask(u"tea"_s, message, stop.get_token());
    consent->resolveSearch(PermissionChoice::always);
    stop.request_stop();
    EXPECT_EQ(await(std::move(answer)), PermissionChoice::deny);
}

TEST_F(ConsentTest, refusingAllAnswersEveryCard) {
    auto search = consent->ask(u"tea"_s, message, stop.get_token());
    auto page = consent->askForPage(message, stop.get_token());
    auto memory = consent->askForMemory(u"Has a dog"_s, message, stop.get_token());
    consent->refuseAll();
    EXPECT_FALSE(consent->pendingPermission());
    EXPECT_FALSE(consent->pendingPageOffer());
    EXPECT_FALSE(consent->pendingMemory());
    EXPECT_EQ(await(std::move(search)), PermissionChoice::deny);
    EXPECT_FALSE(await(std::move(page)));
    EXPECT_FALSE(await(std::move(memory)));
}

TEST_F(ConsentTest, whoAsksMayOutliveTheCards) {
    auto answer = consent->askForPage(message, stop.get_token());
    consent.reset();
    stop.request_stop();
    EXPECT_FALSE(await(std::move(answer)));
}
