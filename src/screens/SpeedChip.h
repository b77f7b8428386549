#pragma once

#include "records/Settings.h"
#include "screens/Chip.h"

/// The chip that chooses how hard the engine works: each press asks for the next speed, and after the last
/// for the first. It shows the speed that it is given, from wherever that comes.
class SpeedChip : public Chip {
    Q_OBJECT

public:
    explicit SpeedChip(const Look &look, QWidget *parent = nullptr);

    void setSpeed(ResponseSpeed speed);

Q_SIGNALS:
    void speedChosen(ResponseSpeed speed);

private:
    ResponseSpeed m_speed = ResponseSpeed::full;
};

/// What the chip shows of a speed.
ChipModel speedChipModel(ResponseSpeed speed);
