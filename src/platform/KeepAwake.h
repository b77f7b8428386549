#pragma once

#include <QString>

#include <memory>

/// While it lives, the machine neither goes to sleep by itself nor counts as idle. The system is asked in
/// the background; where it refuses, or nobody is there to be asked, nothing happens. Main thread only.
class KeepAwake {
public:
    /// `reason` is what the system shows to whoever asks why it stays awake. Returns at once.
    explicit KeepAwake(const QString &reason);

    /// Lets the machine sleep again, also where the answer is still under way.
    ~KeepAwake();
    KeepAwake(const KeepAwake &) = delete;
    KeepAwake &operator=(const KeepAwake &) = delete;

private:
    class Inhibitor;
    std::unique_ptr<Inhibitor> m_inhibitor;
};
