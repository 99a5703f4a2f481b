#include "probe/Verdict.h"

#include "text/Number.h"

#include <algorithm>
#include <iterator>

namespace tarnwick {

std::optional<std::int32_t> ReplyStatus(std::string_view data) {
    const std::size_t blank = data.find(' ');
    if (blank == std::string_view::npos)
        return std::nullopt;
    const std::string_view rest = data.substr(blank + 1);
    return NumberFromText(rest.substr(0, rest.find(' ')));
}

const Verdict* VerdictOf(std::int32_t status) {
    static constexpr Verdict verdicts[] = {
        {200, "Document OK", nullptr, ""},
        {401, "Unauthorized", &PreferencesRecord::Catch401, "Unauthorized (401)"},
        {403, "Document forbidden", &PreferencesRecord::Catch403, "Forbidden (403)"},
        {404, "Document not found", &PreferencesRecord::Catch404, "Not found (404)"},
    };
    const auto* found = std::ranges::find(verdicts, status, &Verdict::Status);
    return found == std::end(verdicts) ? nullptr : found;
}

} // namespace tarnwick
