#pragma once

#include "screens/ChatScreenModel.h"

#include <functional>

class AppState;
class QObject;

/// What the chat screen shows of the application, as it is published now. Main thread.
ChatScreenState chatScreenState(AppState &app);

/// Calls `changed` whenever that may have become another, for as long as `receiver` and `app` live.
void observeChatScreenState(AppState &app, QObject *receiver, const std::function<void()> &changed);
