#include "core/ProcessRole.h"

#include "platform/ProcessArguments.h"
#include "records/Coder.h"

using namespace Qt::StringLiterals;

std::optional<QUuid> headlessScheduleID(const QStringList &arguments) {
    const qsizetype option = arguments.indexOf(u"--run-schedule"_s);
    if (option < 0 || option + 1 >= arguments.size())
        return std::nullopt;
    return decodeUuid(arguments.at(option + 1));
}

std::optional<QUuid> headlessScheduleID() {
    return headlessScheduleID(processArguments());
}

bool isHeadless() {
    return headlessScheduleID().has_value();
}
