#include "pages/PageStore.h"
#include "schedules/ScheduleStore.h"
#include "screens/AppFixture.h"
#include "screens/ChatList.h"
#include "screens/ChatScreen.h"
#include "screens/ChatView.h"
#include "screens/ComposerView.h"
#include "screens/HouseStyle.h"
#include "screens/MessageList.h"
#include "screens/MessageRow.h"
#include "screens/OnboardingView.h"
#include "screens/PageListView.h"
#include "screens/PagePanel.h"
#include "screens/PaneList.h"
#include "screens/ScheduleListView.h"
#include "screens/SettingsView.h"
#include "screens/Sheet.h"
#include "screens/SideWindow.h"
#include "screens/SidebarView.h"
#include "screens/Style.h"
#include "screens/TextView.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QListWidget>
#include <QPainter>
#include <QTimer>

#include <cstdio>

using namespace Qt::StringLiterals;

/// Draws every screen in all six themes: one picture a screen, for looking at. No display is needed.
/// docs/screenshots holds what "docs/screenshots --width 380" has drawn.
///
///   ostrelin_pictures <folder> [--size 760x520] [--text extraLarge] [--face serif] [--scale 2]
///                              [--only <name>] [--width <pixels of one theme>]

namespace {

constexpr int columns = 3;
constexpr int gap = 8;

/// A screen, and how it comes to look as it does.
struct Screen {
    QString name;
    QSize size; ///< its own; empty for the size that is asked for
    std::function<QWidget *()> make;
};

class Pictures : public AppFixture {
public:
    explicit Pictures(const QCommandLineParser &options) : m_options(options) {
        look.setMotion(Motion::reduced);
        start();
    }

    void TestBody() override {}

    void drawAll() {
        const QString only = m_options.value(u"only"_s);
        for (const Screen &screen : screens()) {
            if (only.isEmpty() || screen.name == only)
                draw(screen);
        }
    }

private:
    QList<Screen> screens() {
        const OnboardingState state{.phase = phase::Downloading{},
                                    .activeTier = house,
                                    .downloadProgress =
                                        DownloadProgress{1'740'000'000, 3'000'000'000, 3.5e6}};
        OnboardingState paused = state;
        paused.isDownloadPaused = true;
        const auto in = [](const AppPhase &phase) { return OnboardingState{.phase = phase}; };
        OnboardingState waking = state;
        waking.phase = phase::Starting{};
        return {
            onboarding(u"checking"_s, in(phase::Checking{})),
            onboarding(u"welcome"_s, in(phase::Welcome{})),
            onboarding(u"start"_s, in(phase::NeedsInitialization{})),
            onboarding(u"downloading"_s, state),
            onboarding(u"paused"_s, paused),
            onboarding(u"starting"_s, waking),
            onboarding(u"error"_s, in(phase::Error{failure, true})),
            onboarding(u"unsupported"_s, in(phase::Unsupported{unsupported})),
            {u"why-this-size"_s, {}, [this, state] { return whySize(state); }},
            {u"banners"_s, {}, [this] { return banners(); }},
            {u"chat"_s, {}, [this] { return chat(); }},
            {u"scrolled-up"_s, {}, [this] { return scrolledUp(); }},
            {u"cards"_s, {1040, 1180}, [this] { return cards(); }},
            {u"figures"_s, {760, 1700}, [this] { return figures(); }},
            {u"composer"_s, {}, [this] { return composer(); }},
            {u"attachments"_s, {}, [this] { return attachments(); }},
            {u"sidebar"_s, {}, [this] { return sidebar(); }},
            {u"sidebar-smallest"_s, smallest, [this] { return sidebar(); }},
            {u"rename"_s, {}, [this] { return renaming(); }},
            {u"settings-appearance"_s, settingsSize, [this] { return settings(SettingsPane::appearance); }},
            {u"settings-memory"_s, settingsSize, [this] { return memorySettings(); }},
            {u"settings-search"_s, settingsSize, [this] { return settings(SettingsPane::search); }},
            {u"settings-schedules"_s, settingsSize, [this] { return settings(SettingsPane::schedules); }},
            {u"settings-model"_s, settingsSize, [this] { return settings(SettingsPane::model); }},
            {u"settings-data"_s, settingsSize, [this] { return settings(SettingsPane::data); }},
            {u"settings-about"_s, settingsSize, [this] { return aboutSettings(); }},
            {u"settings-confirm"_s, settingsSize, [this] { return confirmation(); }},
            {u"schedules"_s, schedulesSize, [this] { return schedules(); }},
            {u"schedules-empty"_s, schedulesSize, [this] { return emptySchedules(); }},
            {u"schedule-editor"_s, {640, 600}, [this] { return scheduleEditor(u"Edit"_s); }},
            {u"schedule-editor-once"_s, {640, 600}, [this] { return scheduleEditor(u"New"_s); }},
            {u"schedule-editor-smallest"_s,
             {style::schedulesMinimumWidth, style::schedulesMinimumHeight},
             [this] { return scheduleEditor(u"Edit"_s); }},
            {u"schedules-smallest"_s,
             {style::schedulesMinimumWidth, style::schedulesMinimumHeight},
             [this] { return schedules(); }},
            {u"pages"_s, {900, 640}, [this] { return pages(); }},
            {u"pages-smallest"_s,
             {style::pagesMinimumWidth, style::pagesMinimumHeight},
             [this] { return pages(); }},
            {u"page-panel"_s, {430, 820}, [this] { return pagePanel(); }},
            {u"page-panel-smallest"_s, {style::panelMinimumWidth, 520}, [this] { return pagePanel(); }},
            {u"page-panel-empty"_s, {430, 400}, [this] { return new PagePanel(look); }},
        };
    }

    Screen onboarding(const QString &name, const OnboardingState &state) {
        return {name, {}, [this, state] {
                    auto *view = new OnboardingView(app, look);
                    view->setModel(onboardingModel(state));
                    return view;
                }};
    }

    QWidget *whySize(const OnboardingState &state) {
        auto *view = new OnboardingView(app, look);
        view->setModel(onboardingModel(state));
        view->findChild<Sheet *>()->setShown(true);
        return view;
    }

    QWidget *banners() {
        auto *screen = new ChatScreen(app, look, clock);
        screen->setModel(chatScreenModel(
            {.engine = EngineStatus::failed(failure),
             .needsMoveToApplications = true,
             .upgradeBanner = u"Your Mac can run a smarter version of Ostrelin. Download (9.0 GB)?"_s,
             .availableUpdate =
                 UpdateInfo{.version = u"0.2.0"_s, .downloadURL = QUrl(u"https://ostrelin.invalid/"_s)},
             .memoryWarning =
                 u"Your Mac is running low on memory. Closing other apps will help, or switch to "
                 "a lighter model."_s}));
        return screen;
    }

    /// Somebody reads further up while a reply is written: the way back, a notice, and the dot in the
    /// sidebar.
    QWidget *scrolledUp() {
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

    /// A search with what it found, a page, one that failed, and one card of each kind.
    QWidget *cards() {
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

    /// A reply with what the model thought, under the pointer, and one that is still thought about.
    QWidget *chat() {
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

    /// A reply with every figure.
    QWidget *figures() {
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

    static PageDocument page(const QString &title, int minutes) {
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

    /// Three saved pages, the newest of which is chosen.
    QWidget *pages() {
        for (const PageSummary &saved : listPages())
            deletePage(saved.id);
        savePage(page(u"Household budget"_s, 0));
        savePage(page(u"Caffeine in hot drinks and everything else that keeps one awake"_s, -1000));
        savePage(page(u"خطة الأسبوع"_s, -90'000));
        auto *view = new PageListView(look);
        QTimer::singleShot(0, view, [view] { view->findChild<QListWidget *>()->setCurrentRow(0); });
        return view;
    }

    QWidget *emptySchedules() {
        saveSchedules({});
        return new ScheduleListView(app, look, clock);
    }

    /// One of each kind; the weekly one also runs in the background, and the single one is turned off.
    QWidget *schedules() {
        saveSchedules(
            {{.id = QUuid::createUuid(),
              .title = u"Morning overview"_s,
              .prompt = u"What is new in the world of tea? Three short points, and a link for each."_s,
              .recurrence = ScheduleRecurrence::weekly,
              .hour = 8,
              .minute = 30,
              .weekdays = {2, 4, 6},
              .enabled = true,
              .runInBackground = true},
             {.id = QUuid::createUuid(),
              .prompt = u"Write one sentence to begin the day with."_s,
              .hour = 7,
              .enabled = true},
             {.id = QUuid::createUuid(),
              .title = u"Before the flight"_s,
              .prompt = u"List what I should pack for four days in Lisbon in November."_s,
              .recurrence = ScheduleRecurrence::once,
              .hour = 9,
              .onceDate = QDateTime(QDate(2026, 11, 24), QTime(17, 45))}});
        app.scheduler().reload();
        return new ScheduleListView(app, look, clock);
    }

    /// The sheet behind the first button of that word; a new schedule is made one that runs once.
    QWidget *scheduleEditor(const QString &word) {
        QWidget *view = schedules();
        QTimer::singleShot(0, view, [view, word] {
            click(buttonNamed(*view, word));
            if (word == u"New"_s)
                click(buttonNamed(*view, u"Once"_s));
        });
        return view;
    }

    QWidget *pagePanel() {
        auto *panel = new PagePanel(look);
        panel->setDocument(page(u"Household budget"_s, 0));
        return panel;
    }

    /// Half of everything: the speed, the thinking, and files with short and long names.
    QWidget *composer() {
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

    QWidget *attachments() {
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

    /// The last of the saved chats is the open one.
    QWidget *sidebar() {
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

    QWidget *renaming() {
        auto *view = static_cast<ChatView *>(sidebar());
        Q_EMIT view->sidebar()->renameRequested(app.chat().summaries().at(1));
        return view;
    }

    QWidget *settings(SettingsPane pane) {
        auto *view = new SettingsView(app, look);
        view->findChild<PaneList *>()->setPane(pane);
        // What most people see, rather than what is so in this run.
        for (TextView *text : view->findChildren<TextView *>()) {
            if (text->text() == modelsFolder())
                text->setText(u"/home/you/.local/share/Ostrelin/models"_s);
            if (text->text() == u"llama.cpp "_s)
                text->setText(u"llama.cpp 0123456789abcdef0123456789abcdef01234567"_s);
        }
        return view;
    }

    QWidget *memorySettings() {
        app.saveMemory(u"- Lives in Tbilisi, and has a balcony that faces south\n"
                       "- Likes tea better than coffee\n- Writes to a colleague in Lagos on Mondays"_s);
        return settings(SettingsPane::memory);
    }

    /// With an update that has been found.
    QWidget *aboutSettings() {
        network.answerEach([](const ScriptedEngine::Request &) {
            return Script(200).raw(
                R"({"version": "0.2.0", "downloadURL": "https://ostrelin.invalid/download"})");
        });
        app.changeSetting(&Settings::searchMode, SearchMode::ask);
        app.updates().check();
        eventually([this] { return app.availableUpdate().has_value(); });
        return settings(SettingsPane::about);
    }

    QWidget *confirmation() {
        QWidget *view = settings(SettingsPane::data);
        view->findChild<Sheet *>()->setShown(true);
        return view;
    }

    QImage drawn(const Screen &screen, Theme theme) {
        Settings wanted = app.settings();
        wanted.theme = theme;
        wanted.textSize = decoded(m_options.value(u"text"_s), TextSize::large);
        wanted.typeFace = decoded(m_options.value(u"face"_s), TypeFace::sans);
        app.saveSettings(wanted);
        look.follow(wanted);
        look.applyToApplication();
        const QStringList sides = m_options.value(u"size"_s).split(u'x');
        SideWindow window(look, screen.name, screen.make());
        window.resize(screen.size.isEmpty() ? QSize(sides.value(0).toInt(), sides.value(1).toInt())
                                            : screen.size);
        window.show();
        QCoreApplication::processEvents();
        // What came up only now has a place only now.
        QCoreApplication::processEvents();
        const double scale = m_options.value(u"scale"_s).toDouble();
        QImage image(window.size() * scale, QImage::Format_RGB32);
        image.setDevicePixelRatio(scale);
        window.render(&image);
        return image;
    }

    template<typename Enum>
    static Enum decoded(const QString &name, Enum otherwise) {
        const auto names = caseNames(otherwise);
        const auto found = std::find(names.begin(), names.end(), name);
        return found == names.end() ? otherwise : Enum(found - names.begin());
    }

    void draw(const Screen &screen) {
        QImage sheet;
        QPainter painter;
        int place = 0;
        for (const Theme theme : themes) {
            QImage picture = drawn(screen, theme);
            picture.setDevicePixelRatio(1);
            if (const int width = m_options.value(u"width"_s).toInt())
                picture = picture.scaledToWidth(width, Qt::SmoothTransformation);
            const QSize cell = picture.size() + QSize(gap, gap);
            if (sheet.isNull()) {
                sheet = QImage(cell.width() * columns - gap,
                               cell.height() * int(themes.size()) / columns - gap, QImage::Format_RGB32);
                sheet.fill(QColor(0x80, 0x80, 0x80));
                painter.begin(&sheet);
            }
            painter.drawImage(cell.width() * (place % columns), cell.height() * (place / columns), picture);
            ++place;
        }
        painter.end();
        const QString path = QDir(m_options.positionalArguments().value(0)).filePath(screen.name + u".png"_s);
        if (!sheet.save(path, "PNG", 0))
            qFatal("can't write %s", qPrintable(path));
        std::puts(qPrintable(path));
    }

    const QCommandLineParser &m_options;
    const QSize smallest{style::contentMinimumWidth, style::contentMinimumHeight};
    const QSize schedulesSize{style::schedulesWidth, style::schedulesHeight};
    const QSize settingsSize{style::settingsWidth, style::settingsHeight};
    const QString failure =
        u"The engine ended before it was ready.\nllama_model_load: error loading model: tensor 'blk.12' is "
        "not within the file bounds; the model is damaged or incomplete."_s;
    const QString unsupported = u"Ostrelin runs on Apple Silicon Macs with 8 GB of memory or more."_s;
    Look look;
};

} // namespace

int main(int argc, char **argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication::setStyle(new HouseStyle);
    const QApplication application(argc, argv);
    QCommandLineParser options;
    options.addOptions({{u"size"_s, {}, u"size"_s, u"1040x760"_s},
                        {u"text"_s, {}, u"size"_s},
                        {u"face"_s, {}, u"face"_s},
                        {u"scale"_s, {}, u"factor"_s, u"1"_s},
                        {u"only"_s, {}, u"name"_s},
                        {u"width"_s, {}, u"pixels"_s}});
    options.process(application);
    Pictures(options).drawAll();
    return 0;
}
