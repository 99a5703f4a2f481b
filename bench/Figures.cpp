#include "Figures.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

namespace tarnwick::bench {

namespace {

double Seconds(clockid_t clock) {
    timespec now = {};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

void Line(const std::string& what, double value, const std::string& unit, const std::string& verdict) {
    std::printf("  %-62s %10.2f %-18s %s\n", what.c_str(), value, unit.c_str(), verdict.c_str());
    std::fflush(stdout);
}

void Judged(const std::string& what, double value, const char* bound, double limit, const std::string& unit,
            bool reached) {
    char verdict[64];
    std::snprintf(verdict, sizeof verdict, "%s (%s %g)", reached ? "ok" : "MISSED", bound, limit);
    Line(what, value, unit, verdict);
}

} // namespace

double WallSeconds() { return Seconds(CLOCK_MONOTONIC); }
double ProcessorSeconds() { return Seconds(CLOCK_PROCESS_CPUTIME_ID); }

double Percentile(std::vector<double> values, double percent) {
    std::ranges::sort(values);
    const double place = std::ceil(percent / 100 * static_cast<double>(values.size()));
    return values.at(static_cast<std::size_t>(std::max(place, 1.0)) - 1);
}

double Median(std::vector<double> values) { return Percentile(std::move(values), 50); }

Cost Median(const std::vector<Cost>& costs) {
    std::vector<double> walls;
    std::vector<double> processors;
    for (const Cost& cost : costs) {
        walls.push_back(cost.Wall);
        processors.push_back(cost.Processor);
    }
    return {Median(walls), Median(processors)};
}

std::size_t ResidentBytes() {
    std::size_t total = 0;
    std::size_t resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

std::size_t PeakResidentBytes() {
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<std::size_t>(usage.ru_maxrss) * 1024;
}

std::size_t HeapBytes() {
    const struct mallinfo2 heap = mallinfo2();
    return heap.uordblks + heap.hblkhd;
}

void Title(const std::string& text) {
    std::printf("\n%s\n", text.c_str());
    std::fflush(stdout);
}

void Show(const std::string& what, double value, const std::string& unit) { Line(what, value, unit, ""); }

void AtMost(const std::string& what, double value, double limit, const std::string& unit) {
    Judged(what, value, "at most", limit, unit, value <= limit);
}

void AtLeast(const std::string& what, double value, double limit, const std::string& unit) {
    Judged(what, value, "at least", limit, unit, value >= limit);
}

} // namespace tarnwick::bench
