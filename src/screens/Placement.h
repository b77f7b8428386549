#pragma once

#include <QByteArray>

#include <optional>

/// Where the main window stood, and how wide its sidebar was, from one start to the next. This belongs to
/// the desktop and not to the person's settings: it lies in Ostrelin/windows.ini in the folder for
/// configuration ($XDG_CONFIG_HOME on Linux). What can't be read isn't there, what can't be written is
/// lost. Main thread.

/// The window's place, size and state, as QWidget::saveGeometry() gives it; empty before the first start.
QByteArray loadWindowGeometry();
void saveWindowGeometry(const QByteArray &geometry);

/// The sidebar's width in device-independent pixels; nothing before the first start.
std::optional<int> loadSidebarWidth();
void saveSidebarWidth(int width);
