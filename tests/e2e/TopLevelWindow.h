#pragma once

#include <QByteArray>

/// What a window manager knows and does, for a display that has none. All look for the visible
/// top-level window that names this process as its own (_NET_WM_PID) on the display of the environment.

/// The window's number; 0 if there is none. The others give false then.
quint32 topLevelWindow(qint64 processIdentifier);

/// Asks for the window's end, as the button in a title bar does (WM_DELETE_WINDOW of the ICCCM).
bool closeTopLevelWindow(qint64 processIdentifier);

/// Gives the keyboard to the window.
bool focusTopLevelWindow(qint64 processIdentifier);

/// Takes the keyboard from whoever has it, as a click outside of all windows does.
bool focusNoWindow();

/// The class of that window, by which a desktop knows whose it is (ICCCM, 4.1.2.5); empty if there is none.
QByteArray classOfTopLevelWindow(qint64 processIdentifier);

/// The number of the window that has the keyboard, whoever's it is.
quint32 focusedWindow();
