#include "core/DemoModel.h"

#include "platform/AtomicFile.h"
#include "records/Coder.h"

using namespace Qt::StringLiterals;

DemoModel demoModel(const QString &resourcesFolder) {
    const QString folder = resourcesFolder + u"/demo/"_s;
    DemoModel demo{folder + u"sprout.gguf"_s, std::nullopt};
    const std::optional<QByteArray> description = readFile(folder + u"tier.json"_s);
    if (!description)
        return demo;
    try {
        demo.tier = decodeRecord<ModelTier>(*description);
    } catch (const DecodingError &) {
        // Without its description the model still runs, with no settings of its own.
    }
    return demo;
}
