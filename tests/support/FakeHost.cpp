#include "support/FakeHost.h"

using namespace Qt::StringLiterals;

FakeHost::FakeHost() {
    tier = ModelTier{
        .id = u"small"_s,
        .displayName = u"Small"_s,
        .filename = u"small.gguf"_s,
        .url = QUrl(u"https://models.example/small.gguf"_s),
        .mirrorURL = {},
        .sha256 = {},
        .sizeBytes = 1,
        .requiredGPUBytes = 0,
        .minRAMBytes = 0,
        .contextLength = 4096,
        .sampling = {.temperature = 0.7, .topP = 0.8, .topK = 20, .minP = 0, .presencePenalty = 1.5},
        .thinkingSampling = {.temperature = 0.6, .topP = 0.95, .topK = 30, .minP = 0.1, .presencePenalty = 0},
        .supportsTools = true,
        .license = u"MIT"_s,
        .gpuBytesProvisional = {}};
}
