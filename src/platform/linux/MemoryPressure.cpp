#include "platform/MemoryPressure.h"

#include "platform/Descriptor.h"

#include <QSocketNotifier>

#include <fcntl.h>

// Pressure stall information (Documentation/accounting/psi.rst of the kernel): a trigger is a line written to
// a descriptor, which then has exceptional data each time the trigger fires, at most once a window. Windows
// of two seconds are open to everybody.

namespace {

constexpr auto file = "/proc/pressure/memory";

/// Every program stood still for 150 ms of 2 s.
constexpr char trigger[] = "full 150000 2000000";

} // namespace

class MemoryPressure::Source {
public:
    Source() : m_file(::open(file, O_RDWR | O_NONBLOCK | O_CLOEXEC)) {
        if (::write(m_file.number(), trigger, sizeof trigger) != ssize_t(sizeof trigger))
            m_file.close();
    }

    bool isThere() const { return m_file.number() >= 0; }

    void watch(MemoryPressure &pressure) {
        m_notifier = std::make_unique<QSocketNotifier>(m_file.number(), QSocketNotifier::Exception);
        connect(m_notifier.get(), &QSocketNotifier::activated, &pressure, &MemoryPressure::critical);
    }

private:
    Descriptor m_file;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

MemoryPressure::MemoryPressure(QObject *parent) : QObject(parent) {
    auto source = std::make_unique<Source>();
    if (!source->isThere())
        return;
    source->watch(*this);
    m_source = std::move(source);
}

MemoryPressure::~MemoryPressure() = default;

bool MemoryPressure::isWatching() const {
    return m_source != nullptr;
}
