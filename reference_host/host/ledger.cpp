#include "reference_host/host/ledger.h"

#include <algorithm>

namespace reference_host
{

std::string Ledger_entry::description() const
{
    return m_name.empty() ? m_kind : m_kind + " '" + m_name + "'";
}

void Ledger_entry::take_back() const
{
    if (m_references == 0)
        note("was released more often than it was handed out");
    else
        --m_references;
}

void Ledger_entry::used(const char* operation) const
{
    if (m_references == 0 && !m_is_lent)
        note(std::string("was used after its release (") + operation + ")");
}

void Ledger_entry::note(const std::string& misuse) const
{
    if (std::find(m_misuses.begin(), m_misuses.end(), misuse) == m_misuses.end())
        m_misuses.push_back(misuse);
}

std::vector<std::string> Ledger::findings(const std::vector<Kept_reference>& kept) const
{
    std::vector<Kept_reference> open = kept;
    std::vector<std::string> lines;
    for (const auto& entry : m_entries) {
        int missing = entry->references();
        for (Kept_reference& exception : open) {
            if (missing > 0 && exception.holds && entry->kind() == exception.kind) {
                exception.holds = false;
                --missing;
            }
        }
        if (missing > 0)
            lines.push_back(entry->description() + " was not released (" + std::to_string(missing) +
                            (missing == 1 ? " reference)" : " references)"));
        for (const std::string& misuse : entry->misuses())
            lines.push_back(entry->description() + " " + misuse);
    }
    return lines;
}

} // namespace reference_host
