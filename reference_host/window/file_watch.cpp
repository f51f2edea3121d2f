#include "reference_host/window/file_watch.h"

#include <system_error>

namespace reference_host
{

namespace fs = std::filesystem;

bool File_watch::has_changed(const std::string& file)
{
    std::error_code problem, other_problem;
    const State now{fs::last_write_time(file, problem), fs::file_size(file, other_problem)};
    const auto state = problem || other_problem ? std::nullopt : std::make_optional(now);
    const auto [known, is_new] = m_states.try_emplace(file, state);
    const bool changed = !is_new && !(known->second == state);
    known->second = state;
    return changed;
}

} // namespace reference_host
