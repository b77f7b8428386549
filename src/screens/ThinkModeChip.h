#pragma once

#include "screens/Chip.h"
#include "screens/ThinkMode.h"

/// The chip that chooses the think mode: each press asks for the next one, and after the last for the first.
/// It shows the mode that it is given.
class ThinkModeChip : public Chip {
    Q_OBJECT

public:
    explicit ThinkModeChip(const Look &look, QWidget *parent = nullptr);

    void setMode(ThinkMode mode);

Q_SIGNALS:
    void modeChosen(ThinkMode mode);

private:
    ThinkMode m_mode = ThinkMode::off;
};

/// What the chip shows of a mode.
ChipModel thinkModeChipModel(ThinkMode mode);
