#pragma once

#include "support/SpokenItem.h"

#include <QAccessible>

/// True for what is to be pressed, chosen or written in.
bool isControl(QAccessibleInterface *object);

/// What a person who hears the screen finds there now.
SpokenItem spokenItemOf(QAccessibleInterface *object);
