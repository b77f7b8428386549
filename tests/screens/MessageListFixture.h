#pragma once

#include "screens/Look.h"
#include "screens/MessageList.h"
#include "screens/MessageRow.h"
#include "screens/Screen.h"
#include "screens/ThinkingBox.h"
#include "screens/ThinkingDisclosure.h"
#include "screens/ThinkingHead.h"
#include "support/ManualClock.h"

#include <QScrollBar>

/// The messages of a chat in a window of their own.
class MessageListFixture : public testing::Test {
protected:
    using Kind = MessageRowModel::Kind;

    MessageListFixture() : list(look, clock) {
        list.resize(800, 600);
        present(list);
    }

    static QString paragraphs(int count) {
        return QStringLiteral("Some words that stand in a line of their own.\n").repeated(count).trimmed();
    }

    void append(Kind kind, const QString &text) { rows.append({QUuid::createUuid(), kind, text}); }

    void fill(int count, int lines = 3) {
        for (int row = 0; row < count; ++row)
            append(row % 2 == 0 ? Kind::user : Kind::assistant, paragraphs(lines));
        update();
    }

    void update() { list.setRows(chat, rows); }

    void setLook(Theme theme, TextSize size) {
        Settings settings;
        settings.theme = theme;
        settings.textSize = size;
        look.follow(settings);
        QCoreApplication::processEvents();
    }

    /// Questions, and replies with more thinking than fits the box.
    void fillWithThinking(int count) {
        for (int pair = 0; pair < count; ++pair) {
            append(Kind::user, QStringLiteral("And?"));
            append(Kind::assistant, paragraphs(3));
            rows.last().reasoning = paragraphs(30);
        }
        update();
    }

    ThinkingDisclosure *thinking(int index) { return row(index)->thinkingDisclosure(); }
    QPushButton *head(int index) { return thinking(index)->findChild<ThinkingHead *>(); }
    QPushButton *box(int index) { return thinking(index)->findChild<ThinkingBox *>(); }

    /// The first row whose thinking is wholly in sight.
    int firstInSight() {
        for (int index = 0; index < rows.size(); ++index) {
            if (row(index) && thinking(index) && topOf(index) >= 0)
                return index;
        }
        return -1;
    }

    QScrollBar &bar() { return *list.verticalScrollBar(); }
    bool isAtEnd() { return bar().value() == bar().maximum(); }
    MessageRow *row(int index) { return list.rowWidget(rows.at(index).id); }

    /// Where a row stands in the viewport.
    int topOf(int index) { return row(index)->y(); }

    StillLook look;
    ManualClock clock;
    MessageList list;
    QUuid chat = QUuid::createUuid();
    QList<MessageRowModel> rows;
};
