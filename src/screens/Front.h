#pragma once

#include <QString>

class QWidget;

/// Puts a window before the person, whatever has become of it: hidden, minimised, or behind others.
/// `activationToken` is what the desktop gave in exchange for the focus (an XDG activation token);
/// empty where there is none, and then the desktop decides whether the window gets the focus.
void bringToFront(QWidget &window, const QString &activationToken = {});
