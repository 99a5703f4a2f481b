// Prints every figure beside its floor. Without arguments all sections, else the named ones.

#include "Sections.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace tarnwick::bench;

struct Section {
    const char* Name;
    void (*Run)();
    bool Listed = true;
};

constexpr Section Sections[] = {
    {"probe", Probe},
    {"probe-qt", ProbeOnQt},
    {"silence", Silence},
    {"silence-qt", SilenceOnQt},
    {"probe-memory", ProbeMemory},
    {"stop", Stop},
    {"walk", Walk},
    {"duplicates", Duplicates},
    {"duplicates-qt", DuplicatesOnQt},
    {"rows", ManyRows},
    {"start", Start},
    {"start-bare", StartBare, false},
    {"start-splash", StartSplash, false},
};

bool RunInChild(const Section& section) {
    const pid_t child = fork();
    if (child == 0) {
        execl("/proc/self/exe", "tarnwick_bench", section.Name, nullptr);
        _exit(127);
    }
    int status = 0;
    return waitpid(child, &status, 0) == child && status == 0;
}

const Section* Find(std::string_view name) {
    for (const Section& section : Sections)
        if (section.Name == name)
            return &section;
    return nullptr;
}

bool RunHere(const Section& section) {
    try {
        section.Run();
        return true;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", section.Name, error.what());
        return false;
    }
}

} // namespace

int main(int count, char** arguments) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    setenv("QT_LOGGING_RULES", "default.warning=false", 0); // what that platform can't do, such as raising windows
    bool good = true;
    if (count == 2 && Find(arguments[1]) != nullptr)
        return RunHere(*Find(arguments[1])) ? 0 : 1;
    for (const Section& section : Sections)
        if (count == 1 && section.Listed)
            good = RunInChild(section) && good;
    for (int number = 1; number < count; ++number) {
        const Section* section = Find(arguments[number]);
        if (section == nullptr)
            std::fprintf(stderr, "no section %s\n", arguments[number]);
        good = section != nullptr && RunInChild(*section) && good;
    }
    return good ? 0 : 1;
}
