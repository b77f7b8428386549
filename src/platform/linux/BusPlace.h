#pragma once

#include "platform/linux/InstancePlace.h"

/// The program's name on the session bus, with the standard interface of applications behind it (Desktop
/// Entry Specification, "D-Bus Activation").
class BusPlace : public InstancePlace {
    Q_OBJECT

public:
    BusPlace();
    ~BusPlace() override;

    Claim claim(const StartTokens &tokens, QDeadlineTimer deadline) override;
};
