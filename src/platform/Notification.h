#pragma once

#include "platform/Task.h"

#include <QString>

/// Asks for leave to show notifications, where a system wants that to be asked; the person's answer comes
/// later and isn't told. Main thread.
void askToNotify();

#ifndef Q_MOC_RUN
/// Shows a notification on the desktop, with a sound; both texts are plain. It is on its way when this
/// returns. The task ends when the desktop has answered, after five seconds, or once `stop` is requested: a
/// process that is about to end has to wait for that, since a desktop may start what shows notifications only
/// now, for those who are still there. A refusal, and a machine without a desktop, go unnoticed. Main thread.
Task<> postNotification(QString title, QString body, std::stop_token stop);
#endif
