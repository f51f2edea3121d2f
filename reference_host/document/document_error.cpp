#include "reference_host/document/document_error.h"

#include <algorithm>

namespace reference_host
{
namespace
{

constexpr size_t most_problems = 100; // nobody reads more

bool is_same(const Document_problem& problem, const Document_error& error)
{
    return problem.text == error.what() && problem.place.file == error.place().file &&
           problem.place.line == error.place().line;
}

} // namespace

void Document_problems::add(const Document_error& error)
{
    const bool is_known =
        std::any_of(m_problems.begin(), m_problems.end(),
                    [&](const Document_problem& problem) { return is_same(problem, error); });
    if (!is_known)
        m_problems.push_back({error.place(), error.what()});
    if (m_problems.size() == most_problems) {
        Document_problem& last = m_problems.emplace_back();
        last.place.file = error.place().file;
        last.text = "further errors are not reported";
    }
    if (error.reach() == Document_error::Reach::document || m_problems.size() > most_problems)
        throw Reading_ended();
}

void Document_problems::end_if_any() const
{
    if (!m_problems.empty())
        throw Reading_ended();
}

} // namespace reference_host
