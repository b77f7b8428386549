#pragma once

#include "records/ModelTier.h"
#include "records/Settings.h"

#include <QJsonArray>

#include <optional>

/// The tools that a request offers to the model, in the form of the chat completions API
/// (https://platform.openai.com/docs/api-reference/chat/create, "tools"). Empty, and the request then has no
/// such key, for a model that can't use tools or for a request that allows none. Any thread.
QJsonArray toolList(bool allowTools, const Settings &settings, const std::optional<ModelTier> &activeTier);
