#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace tarnwick::bench {

struct Cost {
    double Wall = 0;      // seconds
    double Processor = 0; // seconds, user and system, of this process
    double Sleeps = 0;    // how often this thread has waited and woken up
};
using Work = std::function<void()>;

double WallSeconds(); // of a clock that never goes back
Cost Measure(const Work& work);
// Runs the two in turn and returns the best round of either, which other work on the machine has disturbed least.
std::pair<Cost, Cost> MeasureInTurn(int rounds, const Work& own, const Work& floor);

double PeakResidentMiB();

// A line of the result. AtMost and AtLeast say whether the figure is reached.
void Title(const std::string& text);
void Show(const std::string& what, double value, const std::string& unit, const std::string& verdict = {});
void AtMost(const std::string& what, double value, double limit, const std::string& unit);
void AtLeast(const std::string& what, double value, double limit, const std::string& unit);

} // namespace tarnwick::bench
