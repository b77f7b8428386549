#pragma once

/// How much of what a model thought is shown: nothing, five lines, or all of it.
enum class ThinkingStage { hidden, box, expanded };
