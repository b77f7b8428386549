#include "core/ProgramVersion.h"

ProgramVersion programVersion() {
    return {QStringLiteral(OSTRELIN_VERSION), OSTRELIN_BUILD};
}
