#pragma once

/// Whether the assistant thinks before it answers.
enum class ThinkMode { off, nextReply, always };
