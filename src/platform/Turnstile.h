#pragma once

#include "platform/WaitPoint.h"

#ifndef Q_MOC_RUN
#include <deque>
#include <memory>

/// Lets one coroutine of the main thread at a time through, in the order of their coming. Main thread
/// only.
class Turnstile {
public:
    Turnstile() : m_line(std::make_shared<Line>()) {}

    /// A place in the line; letting go of it lets the next one through.
    using Turn = std::shared_ptr<void>;

    /// Waits until everybody who came before has gone, or until `stop` is requested. Which of the two it
    /// was, the token tells.
    Task<Turn> enter(std::stop_token stop) { return enterLine(m_line, stop); }

private:
    using Place = std::shared_ptr<WaitPoint>;
    using Line = std::deque<Place>;

    static Task<Turn> enterLine(std::shared_ptr<Line> line, std::stop_token stop) {
        const auto place = std::make_shared<WaitPoint>();
        line->push_back(place);
        Turn turn(nullptr, [line, place](void *) { leave(*line, place); });
        const std::stop_callback wakeOnStop(stop, [place] { place->wake(); });
        while (line->front() != place && !stop.stop_requested())
            co_await place->wait();
        co_return turn;
    }

    static void leave(Line &line, const Place &place) {
        const bool wasFirst = line.front() == place;
        std::erase(line, place);
        if (wasFirst && !line.empty())
            line.front()->wake();
    }

    std::shared_ptr<Line> m_line;
};
#endif
