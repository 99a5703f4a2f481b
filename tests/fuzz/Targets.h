#pragma once

// What the fuzzer calls with made-up input. A target throws when the input brings out an answer that can't be right;
// tests/posix_services_test.cpp runs all of them over the kept corpus.

#include <map>
#include <string>
#include <string_view>

namespace tarnwick::fuzz {

// By the name of the corpus folder. They take the input as it is: a step over its end is a finding.
extern const std::map<std::string, void (*)(std::string_view input)> Targets;

} // namespace tarnwick::fuzz
