#pragma once

#include <QList>

#include <random>

/// What chance decides in one step of a run: the same at each time for the same seed and step.
class Dice {
public:
    Dice(quint32 seed, quint32 step) {
        std::seed_seq start{seed, step};
        m_random.seed(start);
    }

    /// A number from 0 to `most`.
    int upTo(int most) { return int(m_random() % (quint32(most) + 1)); }

    /// True once in so many times.
    bool oneIn(int times) { return upTo(times - 1) == 0; }

    template<typename T>
    T pick(const QList<T> &choices) {
        return choices.at(upTo(int(choices.size()) - 1));
    }

    template<typename T>
    QList<T> shuffled(QList<T> list) {
        for (int last = int(list.size()) - 1; last > 0; --last)
            list.swapItemsAt(last, upTo(last));
        return list;
    }

private:
    std::mt19937 m_random;
};
