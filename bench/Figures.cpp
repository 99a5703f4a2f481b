#include "Figures.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <sys/resource.h>

namespace tarnwick::bench {

namespace {

double Seconds(clockid_t clock) {
    timespec now = {};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

Cost Now() {
    rusage usage = {};
    getrusage(RUSAGE_THREAD, &usage);
    return {WallSeconds(), Seconds(CLOCK_PROCESS_CPUTIME_ID), static_cast<double>(usage.ru_nvcsw)};
}

Cost Best(const std::vector<Cost>& costs) { return *std::ranges::min_element(costs, {}, &Cost::Wall); }

void Judge(const std::string& what, double value, const char* bound, double limit, const std::string& unit, bool met) {
    char verdict[64];
    std::snprintf(verdict, sizeof verdict, "%s (%s %g)", met ? "ok" : "MISSED", bound, limit);
    Show(what, value, unit, verdict);
}

} // namespace

double WallSeconds() { return Seconds(CLOCK_MONOTONIC); }

Cost Measure(const Work& work) {
    const Cost start = Now();
    work();
    const Cost end = Now();
    return {end.Wall - start.Wall, end.Processor - start.Processor, end.Sleeps - start.Sleeps};
}

std::pair<Cost, Cost> MeasureInTurn(int rounds, const Work& own, const Work& floor) {
    std::vector<Cost> owns;
    std::vector<Cost> floors;
    for (int round = 0; round < rounds; ++round) {
        floors.push_back(Measure(floor));
        owns.push_back(Measure(own));
    }
    return {Best(owns), Best(floors)};
}

double PeakResidentMiB() {
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024;
}

void Title(const std::string& text) { std::printf("\n%s\n", text.c_str()); }

void Show(const std::string& what, double value, const std::string& unit, const std::string& verdict) {
    std::printf("  %-66s %9.2f %-6s %s\n", what.c_str(), value, unit.c_str(), verdict.c_str());
    std::fflush(stdout);
}

void AtMost(const std::string& what, double value, double limit, const std::string& unit) {
    Judge(what, value, "at most", limit, unit, value <= limit);
}

void AtLeast(const std::string& what, double value, double limit, const std::string& unit) {
    Judge(what, value, "at least", limit, unit, value >= limit);
}

} // namespace tarnwick::bench
