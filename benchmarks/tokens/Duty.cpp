#include "tokens/Duty.h"

#include "client/PacedStream.h"
#include "figures/Figure.h"
#include "platform/Clock.h"
#include "support/Await.h"
#include "tokens/EndlessEngine.h"

#include <QElapsedTimer>
#include <QJsonObject>

#include <array>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

struct Watched {
    ResponseSpeed speed;
    const char *name;
    qint64 milliseconds; ///< some whole bursts with their rests
};

constexpr Watched fullSpeed{ResponseSpeed::full, "engine at work, full speed", 3000};
constexpr std::array gentleSpeeds{
    Watched{ResponseSpeed::calm, "engine at work, calm (peer: full)", 8000},
    Watched{ResponseSpeed::slowYourRoll, "engine at work, slowest (peer: full)", 15'000},
};

StreamRequest longRequest() {
    StreamRequest request;
    request.messages = {QJsonObject{{u"role"_s, u"user"_s}, {u"content"_s, u"Tell me about your garden."_s}}};
    request.sampling = {.temperature = 0, .topP = 1, .topK = 1, .minP = 0, .presencePenalty = 0};
    request.maxTokens = 4096;
    return request;
}

std::unique_ptr<ChunkStream> open(const EndlessEngine &engine, ResponseSpeed speed) {
    const LLMClient client(engine.url(), engine.key());
    if (const std::optional<Pace> pace = paceOf(speed))
        return std::make_unique<PacedStream>(client, longRequest(), *pace, Clock::system());
    return client.stream(longRequest());
}

/// Reads replies for as long as is watched, and says which part of that time a processor was busy with them.
double shareOf(const EndlessEngine &engine, const Watched &watched) {
    QElapsedTimer timer;
    timer.start();
    const double before = engine.processorSeconds();
    std::stop_source source;
    while (timer.elapsed() < watched.milliseconds) {
        const std::unique_ptr<ChunkStream> stream = open(engine, watched.speed);
        bool hasText = false;
        while (timer.elapsed() < watched.milliseconds) {
            const auto chunk = await(stream->next(source.get_token()));
            if (!chunk)
                break;
            hasText = hasText || !chunk->content.isEmpty();
        }
        if (!hasText)
            throw std::runtime_error("the engine gave no text");
    }
    const double seconds = static_cast<double>(timer.nsecsElapsed()) / 1e9;
    return (engine.processorSeconds() - before) / seconds;
}

} // namespace

bool isDutyWanted(const std::string &filter) {
    return isWanted(fullSpeed.name, filter) || std::ranges::any_of(gentleSpeeds, [&](const Watched &speed) {
               return isWanted(speed.name, filter);
           });
}

void measureDuty(const EndlessEngine &engine, const std::string &filter) {
    if (!isDutyWanted(filter))
        return;
    const double full = shareOf(engine, fullSpeed);
    if (isWanted(fullSpeed.name, filter))
        print({fullSpeed.name, full, "cores"});
    for (const Watched &speed : gentleSpeeds) {
        if (isWanted(speed.name, filter))
            print({speed.name, shareOf(engine, speed), "cores", full});
    }
}
