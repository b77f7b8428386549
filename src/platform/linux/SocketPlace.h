#pragma once

#include "platform/Descriptor.h"
#include "platform/linux/InstancePlace.h"

#include <memory>

class QSocketNotifier;

/// A locked file and a socket beside it, in the folder that the system keeps for the person's running
/// programs. The lock decides who holds the place, and the kernel drops it when its holder dies.
class SocketPlace : public InstancePlace {
    Q_OBJECT

public:
    SocketPlace();
    ~SocketPlace() override;

    Claim claim(const StartTokens &tokens, QDeadlineTimer deadline) override;

private:
    bool openFolder();
    void listen();
    void accept();

    Descriptor m_folder;
    Descriptor m_lock;
    Descriptor m_socket;
    std::unique_ptr<QSocketNotifier> m_arrival;
};
