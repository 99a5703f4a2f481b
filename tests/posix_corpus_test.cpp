// The fuzz targets over their kept inputs: seeds, and every input that once brought out a fault.

#include "fuzz/Targets.h"
#include "posix_support.h"

#include <gtest/gtest.h>

namespace tarnwick::test {

TEST(Corpus, EveryKeptInputIsAnsweredRightly) {
    for (const fuzz::Target& target : fuzz::Targets) {
        int inputs = 0;
        for (const auto& entry : std::filesystem::directory_iterator(FUZZ_CORPUS + std::string(target.Name))) {
            EXPECT_NO_THROW(target.Run(FileBytes(entry.path().string()))) << entry.path();
            ++inputs;
        }
        EXPECT_GT(inputs, 0) << target.Name;
    }
}

} // namespace tarnwick::test
