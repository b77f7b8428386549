#include "figures/Measure.h"
#include "records/ChatStore.h"
#include "records/Folders.h"
#include "screens/ChatList.h"
#include "screens/SidebarModel.h"
#include "support/TemporaryApplicationFolder.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

// A long list of chats: what the sidebar does whenever a chat is saved or a range is chosen.

using namespace Qt::StringLiterals;

namespace {

constexpr int chatCount = 10'000;

/// Chats over two months, newest first.
QList<ConversationSummary> manyChats(const QDateTime &now) {
    QList<ConversationSummary> chats;
    for (int index = 0; index < chatCount; ++index)
        chats.append({QUuid::createUuid(), u"What to plant in the garden, part %1"_s.arg(index),
                      now.addSecs(-index * 520), 1200});
    return chats;
}

/// The list in a window, as wide and as high as in a window of the usual size.
class ListOnScreen {
public:
    ListOnScreen() {
        // Without motion, all that a change paints is painted at once.
        m_look.setMotion(Motion::reduced);
        m_list.resize(224, 600);
        m_list.show();
        QCoreApplication::processEvents();
    }

    /// Filters the chats and paints those in sight.
    void show(const SidebarState &state) {
        const SidebarModel model = sidebarModel(state);
        m_list.setChats(model.chats, model.openID);
        m_list.viewport()->repaint();
        QCoreApplication::processEvents();
    }

private:
    Look m_look;
    ChatList m_list{m_look};
};

/// From one range to another and back, each a list of thousands.
void filterAndDraw(benchmark::State &state) {
    SidebarState shown;
    shown.now = QDateTime::currentDateTime();
    shown.summaries = manyChats(shown.now.toUTC());
    shown.openID = shown.summaries.at(chatCount / 3).id;
    ListOnScreen list;
    for (auto round : state) {
        shown.range = shown.range == SessionRange::all ? SessionRange::month : SessionRange::all;
        list.show(shown);
    }
}
BENCHMARK(filterAndDraw)->Unit(benchmark::kMillisecond);

/// The same from the index on disk.
void readFilterAndDraw(benchmark::State &state) {
    const TemporaryApplicationFolder folder;
    ensureFolders();
    SidebarState shown;
    shown.now = QDateTime::currentDateTime();
    ChatStore().writeIndex(manyChats(shown.now.toUTC()));
    ListOnScreen list;
    for (auto round : state) {
        shown.summaries = ChatStore().list();
        shown.range = shown.range == SessionRange::all ? SessionRange::month : SessionRange::all;
        list.show(shown);
    }
}
BENCHMARK(readFilterAndDraw)->Unit(benchmark::kMillisecond)->UseRealTime();

const Declared drawn{
    {.name = "list of 10,000 chats filtered and drawn", .function = "filterAndDraw", .budget = {.most = 16}}};
const Declared read{{.name = "list of 10,000 chats from the index to the screen",
                     .function = "readFilterAndDraw",
                     .budget = {.most = 150}}};

} // namespace
