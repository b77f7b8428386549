#include "figures/Measure.h"

#include "figures/Median.h"

#include <algorithm>
#include <cstdio>
#include <map>

#include <benchmark/benchmark.h>

namespace {

/// Collects what the repetitions took.
class Collector : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context &) override { return true; }

    void ReportRuns(const std::vector<Run> &runs) override {
        for (const Run &run : runs) {
            if (run.run_type != Run::RT_Iteration)
                continue;
            if (run.error_occurred)
                std::fprintf(stderr, "%s: %s\n", run.run_name.function_name.c_str(),
                             run.error_message.c_str());
            else
                add(run);
        }
    }

    /// The median time of a function; nothing if it didn't run.
    std::optional<double> median(const std::string &function) const {
        const auto found = m_times.find(function);
        if (found == m_times.end())
            return std::nullopt;
        return ::median(found->second);
    }

    std::string unit(const std::string &function) const { return m_units.at(function); }

private:
    void add(const Run &run) {
        const bool isReal = run.run_name.time_type == "real_time";
        m_times[run.run_name.function_name].push_back(isReal ? run.GetAdjustedRealTime()
                                                             : run.GetAdjustedCPUTime());
        const std::string unit = benchmark::GetTimeUnitString(run.time_unit);
        m_units[run.run_name.function_name] = unit == "us" ? "µs" : unit;
    }

    std::map<std::string, std::vector<double>> m_times;
    std::map<std::string, std::string> m_units;
};

std::string functionsOf(const std::vector<Measure> &wanted) {
    std::string pattern;
    for (const Measure &measure : wanted) {
        for (const std::string &function : {measure.function, measure.peer}) {
            if (!function.empty())
                pattern += (pattern.empty() ? "^" : "|^") + function + "(/|$)";
        }
    }
    return pattern;
}

void prepare() {
    char program[] = "benchmarks";
    char repetitions[] = "--benchmark_repetitions=9";
    char shuffled[] = "--benchmark_enable_random_interleaving=true";
    char minimum[] = "--benchmark_min_time=0.1";
    char *arguments[] = {program, repetitions, shuffled, minimum, nullptr};
    int count = 4;
    benchmark::Initialize(&count, arguments);
}

} // namespace

int takeMeasures(const std::string &filter) {
    std::vector<Measure> wanted;
    std::copy_if(measures().begin(), measures().end(), std::back_inserter(wanted),
                 [&](const Measure &measure) { return isWanted(measure.name, filter); });
    if (wanted.empty())
        return 0;
    prepare();
    Collector collector;
    benchmark::RunSpecifiedBenchmarks(&collector, functionsOf(wanted));
    int status = 0;
    for (const Measure &measure : wanted) {
        const std::optional<double> value = collector.median(measure.function);
        const std::optional<double> peer = collector.median(measure.peer);
        if (!value || (!peer && !measure.peer.empty())) {
            std::fprintf(stderr, "%s: could not be measured\n", measure.name.c_str());
            status = 1;
            continue;
        }
        print({measure.name, *value, collector.unit(measure.function), peer, measure.budget});
    }
    benchmark::Shutdown();
    return status;
}
