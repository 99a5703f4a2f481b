// Prints every figure beside its floor. Without arguments all sections, else the named ones.

#include "Sections.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <map>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace tarnwick::bench {

void RunSection(const char* name) {
    const pid_t child = fork();
    if (child == 0) {
        execl("/proc/self/exe", "tarnwick_bench", name, nullptr);
        _exit(127);
    }
    int status = 0;
    if (waitpid(child, &status, 0) != child || status != 0)
        throw std::runtime_error("it has failed");
}

} // namespace tarnwick::bench

int main(int count, char** arguments) {
    using namespace tarnwick::bench;
    const std::map<std::string, void (*)()> sections = {{"links", Links},           {"links-qt", LinksOnQt},
                                                        {"silence", Silence},       {"silence-qt", SilenceOnQt},
                                                        {"duplicates", Duplicates}, {"duplicates-qt", DuplicatesOnQt},
                                                        {"rows", ManyRows},         {"start", Start},
                                                        {"start-bare", StartBare},  {"start-main", StartMain}};
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    setenv("QT_LOGGING_RULES", "default.warning=false", 0); // what that platform can't do, such as raising windows
    try {
        if (count == 2)
            sections.at(arguments[1])();
        for (int number = 1; count > 2 && number < count; ++number)
            RunSection(arguments[number]);
        for (const auto& [name, section] : sections)
            if (count == 1 && !name.starts_with("start-"))
                RunSection(name.c_str());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
