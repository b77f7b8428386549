#pragma once

#include "faults/Dice.h"

#include <QString>

/// Does to the file at `path` what bad disks and other programs do to files, as chance decides, and gives
/// what was done in a few words. A file that isn't there is made.
QString damage(const QString &path, Dice &dice);
