#include "screens/ChatScreens.h"

#include "pages/PageDocument.h"
#include "screens/ChatList.h"
#include "screens/ChatScreen.h"
#include "screens/ChatView.h"
#include "screens/ComposerView.h"
#include "screens/MessageList.h"
#include "screens/MessageRow.h"
#include "screens/SidebarView.h"

#include <QTimer>

using namespace Qt::StringLiterals;

ChatScreens::ChatScreens() {
    start();
}

QWidget *ChatScreens::banners() {
    auto *screen = new ChatScreen(app, look, clock);
    screen->setModel(chatScreenModel(
        {.engine = EngineStatus::failed(failure),
         .needsMoveToApplications = true,
         .upgradeBanner = u"Your Mac can run a smarter version of Ostrelin. Download (9.0 GB)?"_s,
         .availableUpdate =
             UpdateInfo{.version = u"0.2.0"_s, .downloadURL = QUrl(u"https://ostrelin.invalid/"_s)},
         .memoryWarning = u"Your Mac is running low on memory. Closing other apps will help, or switch to "
                          "a lighter model."_s}));
    return screen;
}

QWidget *ChatScreens::scrolledUp() {
    auto *view = static_cast<ChatView *>(sidebar());
    ChatScreenModel model = view->screen()->model();
    model.showsEmptyState = false;
    model.isGenerating = true;
    for (int row = 0; row < 20; ++row)
        model.rows.append(
            {.id = QUuid::createUuid(),
             .kind = row % 2 == 0 ? MessageRowModel::Kind::user : MessageRowModel::Kind::assistant,
             .text = row % 2 == 0 ? u"And after that?"_s
                                  : u"An extra **80 a month is 960 a year**. That is most "
                                    "often found without giving anything up."_s});
    model.rows.last().isStreaming = true;
    view->screen()->setModel(model);
    QTimer::singleShot(0, view, [this, view] {
        view->findChild<ChatList *>()->setAnswering(app.chat().summaries().at(3).id);
        view->findChild<MessageList *>()->movePages(-1);
        view->screen()->showToast(u"Copied"_s);
    });
    return view;
}

QWidget *ChatScreens::cards() {
    const auto reply = [](const QString &text) {
        return Message{.id = QUuid::createUuid(), .role = Role::assistant, .content = text};
    };
    Message search = reply(u"Green tea has about a third of the caffeine of coffee."_s);
    search.searchEvent = SearchEvent{
        u"caffeine in green tea"_s,
        SearchStatus::allowed,
        {{1, u"How much caffeine is in tea?"_s, u"https://tea.example/caffeine"_s, QString()},
         {2, u"Tea and coffee compared, a cup at a time"_s, u"https://cups.example/"_s, QString()}}};
    Message page = reply(u"Here is your overview."_s);
    page.page = PageSnapshot{u"Caffeine in hot drinks"_s, u"# Caffeine"_s};
    Message failed = reply(u"I tried to set it out."_s);
    failed.pageFailed = true;
    Message asking = reply(u"Good to know."_s);
    auto *screen = new ChatScreen(app, look, clock);
    Conversation chat = newConversation(clock.now(), u"Caffeine"_s);
    chat.messages = {search, page, failed, asking};
    const PendingMemory memory{QUuid::createUuid(), asking.id, u"Drinks green tea in the morning"_s};
    screen->setModel(chatScreenModel({.conversation = chat,
                                      .isGenerating = true,
                                      .pendingMemory = memory,
                                      .showSearchHint = true,
                                      .engine = {EngineStatus::State::ready, {}}}));
    QTimer::singleShot(0, screen,
                       [screen] { click(buttonNamed(*screen, u"Searched: caffeine in green tea"_s)); });
    return screen;
}

QWidget *ChatScreens::chat() {
    const Message question{.id = QUuid::createUuid(),
                           .content = u"What should I look at first if my rent goes up by 80 a month?"_s};
    Message reply{.id = QUuid::createUuid(),
                  .role = Role::assistant,
                  .content = u"## Three places, in this order\n"
                             "An extra **80 a month is 960 a year**. That is most often found without "
                             "giving anything up:\n"
                             "- **Subscriptions.** Cancel what you haven't opened in a month.\n"
                             "- **Food.** Two planned dinners a week save about 45.\n"
                             "- **Transport.** A [monthly ticket](https://example.org) pays from the "
                             "13th ride.\n\n"
                             "| Part | Now | Then |\n|---|---|---|\n| Rent | 1,200 | 1,280 |\n"
                             "| Food | 600 | 555 |\n\n"
                             "```py\nprint((1280 - 1200) * 12)\n```"_s};
    reply.reasoning =
        u"The person pays 1,200 and will pay 1,280. Over a year that is 960. The biggest parts that "
        "can move are food and transport. I should give a short order of steps, with the sums."_s;
    const Message more{.id = QUuid::createUuid(), .content = u"And after that?"_s};
    Message thought{.id = QUuid::createUuid(), .role = Role::assistant};
    thought.reasoning = QStringList(4, *reply.reasoning).join(u'\n');
    auto *screen = new ChatScreen(app, look, clock);
    screen->setModel(
        chatScreenModel({.conversation = Conversation{.id = QUuid::createUuid(),
                                                      .title = u"Household budget for autumn"_s,
                                                      .messages = {question, reply, more, thought}},
                         .streamingID = thought.id,
                         .isGenerating = true}));
    // The rows are there once the window is.
    QTimer::singleShot(0, screen, [screen, id = reply.id] {
        screen->findChild<MessageList *>()->rowWidget(id)->setHovering(true);
    });
    return screen;
}

QWidget *ChatScreens::figures() {
    const QString text = u"```subtitle\nWhere the money goes\n```\n"
                         "```metric\nRent: 1,280\nFood: 555\nLeft: 12%\n```\n"
                         "```chart:blue\nRent: 1280\nFood: 555\nTransport: 120\n```\n"
                         "```line\nJul: 3\nAug: 5\nSep: 4\nOct: 8\nNov: 6\n```\n"
                         "```donut\nRent: 64\nFood: 28\nTransport: 6\nRest: 2\n```\n"
                         "```progress:green\nSaved: 40\nPaid back: 90\n```\n"
                         "```callout:warning\nThe rent goes up in **January**.\n```\n"
                         "```timeline:purple\n**Now:** cancel subscriptions\nDecember: plan dinners\n"
                         "January: new rent\n```\n"
                         "```flow:teal\nLook -> Decide -> Save\n```\n"
                         "```compare\nKeep | Cancel\nMusic | News\nCloud | Games\n```\n"
                         "```cards:pink\nFirst | Subscriptions\nSecond | Dinners\nThird | Ticket\n```\n"
                         "```spec\nRent | 1,280 a month\nFood | 555\n```\n"
                         "> Little by little.\n\n```divider:amber\n```\n"
                         "```sources\n[Tenants](https://example.org)\nA letter\n```"_s;
    auto *screen = new ChatScreen(app, look, clock);
    screen->setModel(chatScreenModel(
        {.conversation = Conversation{
             .id = QUuid::createUuid(),
             .title = u"Household budget for autumn"_s,
             .messages = {{.id = QUuid::createUuid(), .role = Role::assistant, .content = text}}}}));
    return screen;
}

QWidget *ChatScreens::composer() {
    auto *screen = new ChatScreen(app, look, clock);
    auto *view = screen->findChild<ComposerView *>();
    view->setSpeed(ResponseSpeed::calm);
    view->setThinkMode(ThinkMode::always);
    view->setAttachments({{QUuid::createUuid(), u"shopping.txt"_s, {}},
                          {QUuid::createUuid(), u"minutes of the meeting of 15 November 2026.md"_s, {}},
                          {QUuid::createUuid(), u"budget.csv"_s, {}}});
    view->setText(u"What should I buy, and what did we agree on in the meeting?"_s);
    screen->showToast(u"Think longer mode will be enabled when you send your next message."_s);
    return screen;
}

QWidget *ChatScreens::attachments() {
    auto *screen = new ChatScreen(app, look, clock);
    const auto file = [](const QString &name) { return Attachment{QUuid::createUuid(), name, {}}; };
    Conversation chat = newConversation(clock.now(), u"Shopping"_s);
    chat.droppedCount = 4;
    chat.messages = {
        {.id = QUuid::createUuid(),
         .role = Role::user,
         .content = u"What should I buy, and what did we agree on in the meeting?"_s,
         .attachments = {{file(u"shopping.txt"_s),
                          file(u"minutes of the meeting of 15 November 2026, with all that "
                               "was said and by whom.md"_s)}}},
        {.id = QUuid::createUuid(),
         .role = Role::assistant,
         .content = u"Milk and bread. You agreed to meet again in December."_s},
        {.id = QUuid::createUuid(), .role = Role::user, .attachments = {{file(u"budget.csv"_s)}}}};
    screen->setModel(chatScreenModel({.conversation = chat}));
    return screen;
}

QWidget *ChatScreens::sidebar() {
    const QStringList titles = {u"Morning"_s,
                                u"Interview prep plan"_s,
                                u"عنوان المحادثة"_s,
                                QString(),
                                u"Five names for a coffee shop in a neighborhood that never sleeps"_s,
                                u"Compound interest, plainly"_s,
                                u"Thank-you note to a coworker"_s,
                                u"Household budget for autumn"_s};
    for (const ConversationSummary &summary : app.chat().summaries())
        ChatStore().remove(summary.id);
    Conversation last;
    for (int index = 0; index < titles.size(); ++index) {
        last = newConversation(clock.now().addSecs(index), titles.at(index));
        ChatStore().save(last);
    }
    app.chat().openConversation(last.id);
    return new ChatView(app, look, clock);
}

QWidget *ChatScreens::renaming() {
    auto *view = static_cast<ChatView *>(sidebar());
    QTimer::singleShot(
        0, view, [this, view] { Q_EMIT view->sidebar()->renameRequested(app.chat().summaries().at(1)); });
    return view;
}

QWidget *ChatScreens::asking(const std::optional<QString> &query) {
    const Message question{.id = QUuid::createUuid(), .content = u"What is new in the world of tea?"_s};
    const Message reply{.id = QUuid::createUuid(), .role = Role::assistant, .content = u"Let me see."_s};
    ChatScreenState state{.conversation = newConversation(clock.now(), u"Tea"_s), .isGenerating = true};
    state.conversation->messages = {question, reply};
    if (query)
        state.pendingPermission = PendingSearch{QUuid::createUuid(), reply.id, *query};
    else
        state.pendingPageOffer = PendingPageOffer{QUuid::createUuid(), reply.id};
    auto *screen = new ChatScreen(app, look, clock);
    screen->setModel(chatScreenModel(state));
    return screen;
}

QWidget *ChatScreens::withPage() {
    QWidget *view = sidebar();
    const PageDocument shown = page(u"Household budget"_s, 0);
    app.chat().openPage({shown.title, shown.markdown});
    return view;
}

PageDocument ChatScreens::page(const QString &title, int minutes) {
    const QString text =
        u"```metric:green\nIncome: $4,200\nRent: $1,280\nLeft: $960\n```\n\n"
        "Where the money goes in October, with the **new rent** counted in.\n\n"
        "```chart:blue\nRent: 1280\nFood: 555\nTransport: 86\n```\n\n"
        "```callout:warning\nThe deposit rises too: set 240 aside before November.\n```\n\n"
        "## What to do\n\n- Cancel what you [haven't opened](https://example.org) in a month.\n"
        "- Plan two dinners a week.\n\n| Part | Now | Then |\n|---|---|---|\n"
        "| Rent | 1,200 | 1,280 |\n| Food | 600 | 555 |"_s;
    const QDateTime date = QDateTime(QDate(2026, 11, 15), QTime(13, 18)).addSecs(60 * minutes);
    return {QUuid::createUuid(), title, text, date, date};
}
