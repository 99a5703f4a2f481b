// The fuzz targets over their kept inputs: seeds, and every input that once brought out a fault.

#include "fuzz/Targets.h"
#include "posix_support.h"

#include <gtest/gtest.h>

TEST(Corpus, EveryKeptInputIsAnsweredRightly) {
    for (const auto& [name, target] : tarnwick::fuzz::Targets) {
        EXPECT_FALSE(std::filesystem::is_empty(FUZZ_CORPUS + name));
        for (const auto& entry : std::filesystem::directory_iterator(FUZZ_CORPUS + name))
            EXPECT_NO_THROW(target(tarnwick::test::FileBytes(entry.path().string()))) << entry.path();
    }
}
