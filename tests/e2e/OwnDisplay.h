#pragma once

/// The tests of the window never touch the display that somebody works at: the program starts itself anew,
/// with its arguments, on one of its own. Returns there, and nowhere else. Only before the process has a
/// second thread.
void moveToOwnDisplay(char **argv);
