#pragma once

#include "screens/Look.h"

#include <QAccessible>
#include <QAnimationDriver>
#include <QPushButton>
#include <QTest>
#include <QWidget>

#include <algorithm>
#include <chrono>

#include <gtest/gtest.h>

/// What a screen reader calls a widget, and what it takes it for.
inline QString spokenName(QWidget *widget) {
    return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
}
inline QAccessible::Role spokenRole(QWidget *widget) {
    return QAccessible::queryAccessibleInterface(widget)->role();
}

/// The visible button of that name below `root`; null if there is none.
inline QPushButton *buttonNamed(const QWidget &root, const QString &name) {
    const auto buttons = root.findChildren<QPushButton *>();
    const auto found = std::find_if(buttons.begin(), buttons.end(), [&](QPushButton *button) {
        return spokenName(button) == name && button->isVisibleTo(&root);
    });
    return found == buttons.end() ? nullptr : *found;
}

inline void click(QWidget *widget) {
    QTest::mouseClick(widget, Qt::LeftButton);
}

/// Shows a window and waits until it stands there with the focus.
inline void present(QWidget &window) {
    // The pointer of a test that comes first rests where the window will stand.
    QCursor::setPos(10'000, 10'000);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
}

/// A look in which nothing moves, so that a test needn't wait.
struct StillLook : Look {
    StillLook() { setMotion(Motion::reduced); }
};

/// The time of everything that moves, which goes on only when it is told to.
class AnimationClock : public QAnimationDriver {
public:
    AnimationClock() { install(); }
    qint64 elapsed() const override { return m_elapsed; }

    void advance(std::chrono::milliseconds time) {
        // What has been started since begins with the next turn of the event loop.
        QCoreApplication::processEvents();
        m_elapsed += time.count();
        advanceAnimation();
    }

protected:
    void start() override {
        m_elapsed = 0;
        QAnimationDriver::start();
    }

private:
    qint64 m_elapsed = 0;
};

/// How many pixels of a picture have exactly that colour.
inline int pixelsOf(const QImage &picture, const QColor &color) {
    int count = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            count += picture.pixel(x, y) == color.rgb();
    }
    return count;
}
