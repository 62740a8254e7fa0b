// Entry point of the benchmark program. Runs the selected benchmarks with the
// usual console output, then compares each engine benchmark with its reference:
// a benchmark named "X_Reference/args" is the plain-code reference of "X/args",
// and a line "ratio X/args : R x of reference" gives engine time / reference time
// (real time per iteration).
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <map>
#include <string>
#include <unistd.h>
#include <vector>

namespace
{
constexpr const char* kReferenceTag = "_Reference";

class RatioReporter : public benchmark::ConsoleReporter
{
public:
    explicit RatioReporter(OutputOptions options) : ConsoleReporter(options) {}

    void ReportRuns(const std::vector<Run>& reports) override
    {
        ConsoleReporter::ReportRuns(reports);
        for (const Run& run : reports)
        {
            if (run.run_type != Run::RT_Iteration || run.error_occurred || run.iterations == 0)
                continue;
            const std::string name = run.run_name.str();
            Timing& timing = m_Timings[name];
            if (timing.repetitions == 0)
                m_Order.push_back(name);
            // Seconds per iteration; repetitions of one benchmark are averaged.
            timing.secondsPerIteration += run.real_accumulated_time / static_cast<double>(run.iterations);
            ++timing.repetitions;
        }
    }

    // One line per engine benchmark whose reference also ran.
    void PrintRatios(std::ostream& out) const
    {
        for (const std::string& referenceName : m_Order)
        {
            const std::size_t tag = referenceName.find(kReferenceTag);
            if (tag == std::string::npos)
                continue;
            std::string engineName = referenceName;
            engineName.erase(tag, std::char_traits<char>::length(kReferenceTag));
            auto engine = m_Timings.find(engineName);
            auto reference = m_Timings.find(referenceName);
            if (engine == m_Timings.end() || reference->second.secondsPerIteration <= 0.0)
                continue;
            const double ratio = engine->second.Mean() / reference->second.Mean();
            char line[256];
            std::snprintf(line, sizeof(line), "ratio %s : %.3gx of reference", engineName.c_str(), ratio);
            out << line << '\n';
        }
        out.flush();
    }

private:
    struct Timing
    {
        double secondsPerIteration = 0.0;
        int repetitions = 0;
        double Mean() const { return repetitions ? secondsPerIteration / repetitions : 0.0; }
    };
    std::map<std::string, Timing> m_Timings;
    std::vector<std::string> m_Order;
};
}

int main(int argc, char** argv)
{
    char defaultName[] = "vorn_bench";
    char* defaultArgs = defaultName;
    if (!argv)
    {
        argc = 1;
        argv = &defaultArgs;
    }
    // jemalloc, loaded by the memory benchmarks with dlopen, needs more static thread-local room
    // than the loader keeps by default; the tunable is read only at start, so the program starts
    // itself again with it.
    if (!std::getenv("GLIBC_TUNABLES") && argv[0] != defaultArgs)
    {
        setenv("GLIBC_TUNABLES", "glibc.rtld.optional_static_tls=65536", 1);
        execv("/proc/self/exe", argv);
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    RatioReporter reporter(isatty(STDOUT_FILENO) ? benchmark::ConsoleReporter::OO_Color
                                                 : benchmark::ConsoleReporter::OO_None);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    std::cout.flush();
    reporter.PrintRatios(std::cout);
    benchmark::Shutdown();
    return 0;
}
