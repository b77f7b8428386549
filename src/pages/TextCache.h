#pragma once

#include <QCache>
#include <QString>

#include <algorithm>
#include <mutex>
#include <optional>

/// Keeps what was made of texts, the least recently used going first: at most as many as the limit says,
/// and fewer if the texts are long, so that the many versions of a streaming reply don't fill the
/// memory. Any thread.
template<typename Box>
class TextCache {
public:
    /// The characters of all texts together.
    static constexpr qsizetype mostCharacters = 2'000'000;

    explicit TextCache(qsizetype countLimit)
        : m_leastCost(mostCharacters / countLimit),
          m_boxes(m_leastCost * countLimit) {}

    /// A copy of what was stored for exactly this text; nothing if it is there no more.
    std::optional<Box> find(const QString &text) {
        const std::scoped_lock locked(m_lock);
        const Box *box = m_boxes.object(text);
        return box ? std::optional(*box) : std::nullopt;
    }

    void insert(const QString &text, const Box &box) {
        const std::scoped_lock locked(m_lock);
        m_boxes.insert(text, new Box(box), std::clamp(text.size(), m_leastCost, m_boxes.maxCost()));
    }

private:
    const qsizetype m_leastCost;
    std::mutex m_lock;
    QCache<QString, Box> m_boxes;
};
