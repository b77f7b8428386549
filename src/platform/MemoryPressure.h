#pragma once

#include <QObject>

#include <memory>

/// Tells when the machine is so short of memory that programs stand still for it. Main thread only.
class MemoryPressure : public QObject {
    Q_OBJECT

public:
    /// Watches from now on, where the system tells of it.
    explicit MemoryPressure(QObject *parent = nullptr);
    ~MemoryPressure() override;

    /// False where the system tells nothing: critical() then never comes.
    bool isWatching() const;

Q_SIGNALS:
    void critical();

private:
    class Source;
    std::unique_ptr<Source> m_source;
};
