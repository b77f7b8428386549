#pragma once

#include "client/LLMClient.h"

/// What the model calls a chat, made of the person's first message: at most 80 characters, without double
/// quotes. Nothing for a chat that has a title of its own or no reply yet, and nothing if the model doesn't
/// come up with one, or `stop` is requested: the chat is asked about again after its next turn. Main thread.
Task<std::optional<QString>> makeTitle(LLMClient client, Sampling sampling, Conversation conversation,
                                       std::stop_token stop);
