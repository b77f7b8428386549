#pragma once

#include <utility>

#include <unistd.h>

/// A file descriptor that closes itself; for the insides of this room.
class Descriptor {
public:
    explicit Descriptor(int number = -1) : m_number(number) {}
    ~Descriptor() { close(); }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    /// -1 if there is none.
    int number() const { return m_number; }

    void set(int number) {
        close();
        m_number = number;
    }

    /// Lets go of it without closing it.
    int release() { return std::exchange(m_number, -1); }

    void close() {
        if (m_number >= 0)
            ::close(m_number);
        m_number = -1;
    }

private:
    int m_number;
};
