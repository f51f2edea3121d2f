#include "reference_host/recording_host/recorder.h"

#include <new>

namespace QZ
{
namespace TEST
{

Recorded_object::Recorded_object(Recorder& recorder, const std::string& name)
    : m_recorder(recorder), m_name(name)
{
}

void Recorded_object::record(const std::string& call) const
{
    m_recorder.write(m_name + "." + call);
    if (!is_held())
        m_recorder.write_fault("used after release: " + m_name + "." + call);
}

const std::string& Recorded_object::name_as_argument() const
{
    if (!is_held())
        m_recorder.write_fault("handed on after release: " + m_name);
    return m_name;
}

void Recorded_object::count_release() const
{
    m_recorder.write(m_name + ".release()");
    if (m_references > 0)
        --m_references;
    else if (m_lent)
        m_recorder.write_fault("released though lent: " + m_name);
    else
        m_recorder.write_fault("released twice: " + m_name);
}

bool Recorder::next_call_fails()
{
    ++m_fallible_calls;
    const bool fails = m_failing_call > 0 && (m_failure.lasts ? m_fallible_calls >= m_failing_call
                                                              : m_fallible_calls == m_failing_call);
    if (fails && m_failure.throws)
        throw std::bad_alloc();
    return fails;
}

void Recorder::write(const std::string& line)
{
    if (m_keeps_log)
        m_log.push_back(line);
}

std::vector<std::string> Recorder::problems() const
{
    std::vector<std::string> problems = m_faults;
    for (const auto& object : m_objects)
        if (object->references() > 0)
            problems.push_back("never released: " + object->name());
    return problems;
}

} // namespace TEST
} // namespace QZ
