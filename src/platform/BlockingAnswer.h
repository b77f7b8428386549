#pragma once

#include "platform/Http.h"

#ifndef Q_MOC_RUN
#include <stop_token>

/// An answer that is read by waiting for it, on a thread that has nothing else to do.
///
/// What has come and isn't read yet waits in memory; where that is more than `mostWaiting` bytes, the
/// connection is held back until the reader has caught up. Neither the main nor the network thread.
class BlockingAnswer {
public:
    /// Sends `request`. Once `stop` is requested the waits below end with Cancelled, also one that has
    /// begun.
    BlockingAnswer(HttpRequest request, std::stop_token stop, qsizetype mostWaiting = 2'000'000);

    /// Closes the connection.
    ~BlockingAnswer();

    /// The status, once the answer's head has come. Throws HttpError or Cancelled.
    int status();

    /// All of the body that has come since the last call, at least one piece; none at the answer's end.
    /// Throws HttpError or Cancelled.
    QList<QByteArray> more();

private:
    class Queue;

    std::stop_token m_stop;
    std::shared_ptr<Queue> m_queue;
    HttpExchange m_exchange;
};
#endif
