#pragma once

// What the fuzzer calls with made-up input. A function throws when the input brings out an answer that can't be right;
// tests/posix_corpus_test.cpp runs all of them over the kept corpus.

#include <stdexcept>
#include <string_view>

namespace tarnwick::fuzz {

void Shortcut(std::string_view input);
void Url(std::string_view input);
void Reply(std::string_view input);
void Number(std::string_view input);
void Listing(std::string_view input);
void Settings(std::string_view input);
void Folders(std::string_view input);

struct Target {
    std::string_view Name; // the corpus folder's, too
    void (*Run)(std::string_view input);
};
inline constexpr Target Targets[] = {{"shortcut", Shortcut}, {"url", Url},         {"reply", Reply},
                                     {"number", Number},     {"listing", Listing}, {"settings", Settings},
                                     {"folders", Folders}};

inline void Require(bool holds, const char* what) {
    if (!holds)
        throw std::logic_error(what);
}

} // namespace tarnwick::fuzz
