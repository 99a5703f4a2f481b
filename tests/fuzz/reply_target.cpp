// The judgement of a reply's first chunk.

#include "fuzz/Oracle.h"
#include "fuzz/Targets.h"
#include "probe/Verdict.h"

#include <algorithm>
#include <sstream>

namespace tarnwick::fuzz {

namespace {

// The second word as a stream cuts it out, an empty one between two blanks included; nothing if there is no blank.
std::optional<std::string> SecondWord(const std::string& chunk) {
    std::istringstream words(chunk);
    std::string word;
    std::getline(words, word, ' ');
    if (words.eof())
        return std::nullopt;
    std::getline(words, word, ' ');
    return words ? word : "";
}

} // namespace

void Reply(std::string_view input) {
    const std::string chunk(input);
    const auto status = ReplyStatus(chunk);
    const auto word = SecondWord(chunk);
    const NumberShape shape(word.value_or(""));
    Require(!status || shape.Sound, "a reply without a number as its second word has a status");
    if (shape.Sound && shape.FitsDouble())
        Require(status == NumberByDouble(*word), "the status is not the second word's number");
    if (word) {
        Require(ReplyStatus("x" + chunk.substr(chunk.find(' '))) == status, "the first word changes the status");
        Require(ReplyStatus("x " + *word + " 404 404") == status,
                "what stands behind the second word changes the status");
    }

    const Verdict* verdict = status ? VerdictOf(*status) : nullptr;
    constexpr std::int32_t judged[] = {200, 401, 403, 404};
    Require((verdict != nullptr) == (status && std::ranges::find(judged, *status) != std::end(judged)),
            "a status is judged that passes without a word, or the other way round");
    Require(verdict == nullptr || verdict->Status == *status, "the verdict is another status's");
    Require(verdict == nullptr || (verdict->Category == nullptr) == (verdict->Status == 200),
            "a good link counts as a finding, or a bad one doesn't");
}

} // namespace tarnwick::fuzz
