#include "screens/AllScreens.h"

#include "pages/PageStore.h"
#include "schedules/ScheduleStore.h"
#include "screens/OnboardingView.h"
#include "screens/PageListView.h"
#include "screens/PagePanel.h"
#include "screens/PaneList.h"
#include "screens/ScheduleListView.h"
#include "screens/SettingsView.h"
#include "screens/Sheet.h"
#include "screens/Style.h"
#include "screens/TextView.h"

#include <QListWidget>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize smallest{style::contentMinimumWidth, style::contentMinimumHeight};
constexpr QSize schedulesSize{style::schedulesWidth, style::schedulesHeight};
constexpr QSize smallestSchedules{style::schedulesMinimumWidth, style::schedulesMinimumHeight};
constexpr QSize settingsSize{style::settingsWidth, style::settingsHeight};

} // namespace

QList<Screen> AllScreens::screens() {
    const OnboardingState state{.phase = phase::Downloading{},
                                .activeTier = house,
                                .downloadProgress = DownloadProgress{1'740'000'000, 3'000'000'000, 3.5e6}};
    OnboardingState paused = state;
    paused.isDownloadPaused = true;
    OnboardingState onFullDisk = state;
    onFullDisk.diskNote =
        u"Ostrelin picked a lighter brain because your Mac is low on storage. Free up 12.4 GB "
        "to upgrade."_s;
    const QString unsupported = u"Ostrelin runs on Apple Silicon Macs with 8 GB of memory or more."_s;
    const auto in = [](const AppPhase &phase) { return OnboardingState{.phase = phase}; };
    OnboardingState waking = state;
    waking.phase = phase::Starting{};
    return {
        onboarding(u"checking"_s, in(phase::Checking{})),
        onboarding(u"welcome"_s, in(phase::Welcome{})),
        onboarding(u"start"_s, in(phase::NeedsInitialization{})),
        onboarding(u"downloading"_s, state),
        onboarding(u"paused"_s, paused),
        onboarding(u"full-disk"_s, onFullDisk),
        onboarding(u"full-disk-smallest"_s, onFullDisk, smallest),
        onboarding(u"starting"_s, waking),
        onboarding(u"error"_s, in(phase::Error{failure, true})),
        onboarding(u"unsupported"_s, in(phase::Unsupported{unsupported})),
        {u"why-this-size"_s, {}, [this, state] { return whySize(state); }},
        {u"banners"_s, {}, [this] { return banners(); }},
        {u"chat"_s, {}, [this] { return chat(); }},
        {u"scrolled-up"_s, {}, [this] { return scrolledUp(); }},
        {u"cards"_s, {1040, 1180}, [this] { return cards(); }},
        {u"search-card"_s, {}, [this] { return asking(u"new teas 2026"_s); }},
        {u"page-offer"_s, {}, [this] { return asking(std::nullopt); }},
        {u"page-beside"_s, {}, [this] { return withPage(); }},
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
        {u"schedule-editor-smallest"_s, smallestSchedules, [this] { return scheduleEditor(u"Edit"_s); }},
        {u"schedules-smallest"_s, smallestSchedules, [this] { return schedules(); }},
        {u"pages"_s, {900, 640}, [this] { return pages(); }},
        {u"pages-smallest"_s,
         {style::pagesMinimumWidth, style::pagesMinimumHeight},
         [this] { return pages(); }},
        {u"page-panel"_s, {430, 820}, [this] { return pagePanel(); }},
        {u"page-panel-smallest"_s, {style::panelMinimumWidth, 520}, [this] { return pagePanel(); }},
        {u"page-panel-empty"_s, {430, 400}, [this] { return new PagePanel(look); }},
    };
}

Screen AllScreens::onboarding(const QString &name, const OnboardingState &state, const QSize &size) {
    return {name, size, [this, state] {
                auto *view = new OnboardingView(app, look);
                view->setModel(onboardingModel(state));
                return view;
            }};
}

QWidget *AllScreens::whySize(const OnboardingState &state) {
    auto *view = new OnboardingView(app, look);
    view->setModel(onboardingModel(state));
    QTimer::singleShot(0, view, [view] { view->findChild<Sheet *>()->setShown(true); });
    return view;
}

QWidget *AllScreens::pages() {
    for (const PageSummary &saved : listPages())
        deletePage(saved.id);
    savePage(page(u"Household budget"_s, 0));
    savePage(page(u"Caffeine in hot drinks and everything else that keeps one awake"_s, -1000));
    savePage(page(u"خطة الأسبوع"_s, -90'000));
    auto *view = new PageListView(look);
    QTimer::singleShot(0, view, [view] { view->findChild<QListWidget *>()->setCurrentRow(0); });
    return view;
}

QWidget *AllScreens::emptySchedules() {
    saveSchedules({});
    return new ScheduleListView(app, look, clock);
}

QWidget *AllScreens::schedules() {
    saveSchedules({{.id = QUuid::createUuid(),
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

QWidget *AllScreens::scheduleEditor(const QString &word) {
    QWidget *view = schedules();
    QTimer::singleShot(0, view, [view, word] {
        click(buttonNamed(*view, word));
        if (word == u"New"_s)
            click(buttonNamed(*view, u"Once"_s));
    });
    return view;
}

QWidget *AllScreens::pagePanel() {
    auto *panel = new PagePanel(look);
    panel->setDocument(page(u"Household budget"_s, 0));
    return panel;
}

QWidget *AllScreens::settings(SettingsPane pane) {
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

QWidget *AllScreens::memorySettings() {
    app.saveMemory(u"- Lives in Tbilisi, and has a balcony that faces south\n"
                   "- Likes tea better than coffee\n- Writes to a colleague in Lagos on Mondays"_s);
    return settings(SettingsPane::memory);
}

QWidget *AllScreens::aboutSettings() {
    network.answerEach([](const ScriptedEngine::Request &) {
        return Script(200).raw(R"({"version": "0.2.0", "downloadURL": "https://ostrelin.invalid/download"})");
    });
    app.changeSetting(&Settings::searchMode, SearchMode::ask);
    app.updates().check();
    eventually([this] { return app.availableUpdate().has_value(); });
    return settings(SettingsPane::about);
}

QWidget *AllScreens::confirmation() {
    QWidget *view = settings(SettingsPane::data);
    QTimer::singleShot(0, view, [view] { view->findChild<Sheet *>()->setShown(true); });
    return view;
}
