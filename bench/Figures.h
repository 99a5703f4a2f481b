#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace tarnwick::bench {

// Seconds of a clock that never goes back, and of this process's own work (user and system).
double WallSeconds();
double ProcessorSeconds();

struct Cost {
    double Wall = 0;
    double Processor = 0;
};
template <class Work> Cost Measure(Work work) {
    const Cost before = {WallSeconds(), ProcessorSeconds()};
    work();
    return {WallSeconds() - before.Wall, ProcessorSeconds() - before.Processor};
}

// Runs the two in turn and gives the median of either, part by part.
struct Pair {
    Cost Own;
    Cost Floor;
};
template <class Own, class Floor> Pair MeasureInTurn(int rounds, Own own, Floor floor);

double Median(std::vector<double> values);
Cost Median(const std::vector<Cost>& costs);
double Percentile(std::vector<double> values, double percent);

std::size_t ResidentBytes();
std::size_t PeakResidentBytes();
std::size_t HeapBytes(); // handed out by the allocator

// A line of the result. AtMost and AtLeast say whether the figure is reached.
void Title(const std::string& text);
void Show(const std::string& what, double value, const std::string& unit);
void AtMost(const std::string& what, double value, double limit, const std::string& unit);
void AtLeast(const std::string& what, double value, double limit, const std::string& unit);

template <class Own, class Floor> Pair MeasureInTurn(int rounds, Own own, Floor floor) {
    std::vector<Cost> owns;
    std::vector<Cost> floors;
    for (int round = 0; round < rounds; ++round) {
        floors.push_back(Measure(floor));
        owns.push_back(Measure(own));
    }
    return {Median(owns), Median(floors)};
}

} // namespace tarnwick::bench
