#include "screens/FirstExport.h"

#include "figures/Figure.h"
#include "figures/Median.h"

#include <QProcess>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

double milliseconds(const QString &kind) {
    QProcess process;
    process.start(QStringLiteral(BENCH_EXPORTING), {kind});
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        throw std::runtime_error("the page could not be exported");
    return process.readAllStandardOutput().toDouble();
}

void measure(Figure figure, const QString &kind, const std::string &filter) {
    constexpr int rounds = 9;
    if (!isWanted(figure.name, filter))
        return;
    std::vector<double> ours;
    std::vector<double> peer;
    for (int round = 0; round < rounds; ++round) {
        peer.push_back(milliseconds(u"toolkit-"_s + kind));
        ours.push_back(milliseconds(kind));
    }
    figure.value = median(ours);
    figure.peer = median(peer);
    print(figure);
}

} // namespace

void measureFirstExports(const std::string &filter) {
    const Budget budget{.most = 500};
    measure({.name = "the first PDF of a process (peer: the toolkit's)", .unit = "ms", .budget = budget},
            u"pdf"_s, filter);
    measure({.name = "the first PNG of a process (peer: the toolkit's)", .unit = "ms", .budget = budget},
            u"png"_s, filter);
}
