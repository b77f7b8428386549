#include "platform/BlockingAnswer.h"

#include <condition_variable>
#include <mutex>

/// What the network thread hands to the reader.
class BlockingAnswer::Queue : public HttpReceiver {
public:
    explicit Queue(qsizetype mostWaiting) : m_mostWaiting(mostWaiting) {}

    struct Haul {
        QList<QByteArray> pieces;
        bool isHeldBack = false; ///< the answer stands still until it is told to go on
    };

    Next head(int status) override {
        const std::lock_guard lock(m_lock);
        m_status = status;
        m_arrival.notify_one();
        return Next::goOn;
    }

    Next bytes(const QByteArray &piece) override {
        const std::lock_guard lock(m_lock);
        if (m_waiting >= m_mostWaiting) {
            m_isHeldBack = true;
            return Next::hold;
        }
        if (m_waiting == 0)
            m_arrival.notify_one();
        m_waiting += piece.size();
        m_pieces.append(piece);
        return Next::goOn;
    }

    void end(std::optional<HttpError> error) override {
        const std::lock_guard lock(m_lock);
        m_error = std::move(error);
        m_hasEnded = true;
        m_arrival.notify_one();
    }

    int status(const std::stop_token &stop) {
        std::unique_lock lock(m_lock);
        waitUntil([this] { return m_status != 0; }, lock, stop);
        return m_status;
    }

    Haul haul(const std::stop_token &stop) {
        std::unique_lock lock(m_lock);
        waitUntil([this] { return m_waiting > 0; }, lock, stop);
        m_waiting = 0;
        return {std::exchange(m_pieces, {}), std::exchange(m_isHeldBack, false)};
    }

private:
    /// Until `isThere` or the end of the answer; an error comes after everything that is there.
    template<typename Condition>
    void waitUntil(Condition isThere, std::unique_lock<std::mutex> &lock, const std::stop_token &stop) {
        m_arrival.wait(lock, stop, [&] { return isThere() || m_hasEnded; });
        if (stop.stop_requested())
            throw Cancelled();
        if (!isThere() && m_error)
            throw HttpError(*m_error);
    }

    const qsizetype m_mostWaiting;
    std::mutex m_lock;
    std::condition_variable_any m_arrival;
    QList<QByteArray> m_pieces;
    std::optional<HttpError> m_error;
    qsizetype m_waiting = 0; ///< bytes in m_pieces
    int m_status = 0;
    bool m_isHeldBack = false;
    bool m_hasEnded = false;
};

BlockingAnswer::BlockingAnswer(HttpRequest request, std::stop_token stop, qsizetype mostWaiting)
    : m_stop(std::move(stop)),
      m_queue(std::make_shared<Queue>(mostWaiting)),
      m_exchange(std::move(request), m_queue) {}

BlockingAnswer::~BlockingAnswer() = default;

int BlockingAnswer::status() {
    return m_queue->status(m_stop);
}

QList<QByteArray> BlockingAnswer::more() {
    Queue::Haul haul = m_queue->haul(m_stop);
    if (haul.isHeldBack)
        m_exchange.goOn();
    return std::move(haul.pieces);
}
