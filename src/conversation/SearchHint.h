#pragma once

#include "records/Conversation.h"
#include "records/Settings.h"

/// True if the last reply, given without the web, sounds as if the web could have told more. Any thread.
bool suggestsSearch(const Settings &settings, const Conversation &conversation);
