#pragma once

#include <QString>

/// The page dialect read as plainly as can be, without a thought of speed: what the parser is compared
/// with. Gives the description of the blocks that described() should give.
QString plainlyDescribed(const QString &text);
