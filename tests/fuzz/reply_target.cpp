// The judgement of a reply's first chunk.

#include "fuzz/Targets.h"
#include "probe/Verdict.h"

#include <string>

namespace tarnwick::fuzz {

void Reply(std::string_view input) {
    const std::string chunk(input);
    const auto status = ReplyStatus(chunk);
    const std::size_t blank = chunk.find(' ');
    Require(!status || blank != std::string::npos, "a reply of one word has a status");
    if (blank != std::string::npos) {
        Require(ReplyStatus("x" + chunk.substr(blank)) == status, "the first word changes the status");
        Require(ReplyStatus(chunk + " 404 404") == status || chunk.find(' ', blank + 1) == std::string::npos,
                "what comes after the second word changes the status");
    }
    const Verdict* verdict = status ? VerdictOf(*status) : nullptr;
    Require(verdict == nullptr || verdict->Status == *status, "the verdict is another status's");
    Require(verdict == nullptr || (verdict->Category == nullptr) == (verdict->Status == 200),
            "a good link counts as a finding, or a bad one doesn't");
}

} // namespace tarnwick::fuzz
