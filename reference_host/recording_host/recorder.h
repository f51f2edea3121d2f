// The records of a fake host: the log of calls, the objects and their references, and the calls
// that fail or throw.
#ifndef REFERENCE_HOST_RECORDING_HOST_RECORDER_H
#define REFERENCE_HOST_RECORDING_HOST_RECORDER_H

#include "plugin/interface.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace QZ
{
namespace TEST
{

class Recorder;

// What a text or a code is when its call fails; an object is always null then.
enum class Failed_text { null, empty, garbage };

struct Call_failure {
    Failed_text text = Failed_text::null;
    bool lasts = false;  // all calls from this one on fail, too
    bool throws = false; // an exception in place of a result
};

// What every fake object has: its name in the log and its reference count. Starts without
// references.
class Recorded_object
{
public:
    Recorded_object(Recorder& recorder, const std::string& name);
    virtual ~Recorded_object() = default;

    const std::string& name() const { return m_name; }
    int references() const { return m_references; }

    void add_reference() const { ++m_references; }

    // Lets the object be used without a reference from now on.
    void lend() const { m_lent = true; }

    // Records a call on this object; a fault when no reference to it is held.
    void record(const std::string& call) const;

    // The name, for the arguments of another call; a fault when no reference to it is held.
    const std::string& name_as_argument() const;

protected:
    void count_release() const;
    Recorder& m_recorder;

private:
    bool is_held() const { return m_lent || m_references > 0; }

    std::string m_name;
    mutable int m_references = 0;
    mutable bool m_lent = false;
};

class Recorder
{
public:
    // Makes an object, which lives as long as the recorder.
    template<typename Object, typename... Arguments>
    Object* make(Arguments&&... arguments)
    {
        auto object = std::make_unique<Object>(std::forward<Arguments>(arguments)...);
        Object* lent = object.get();
        m_objects.push_back(std::move(object));
        return lent;
    }

    // Hands an object out as a new reference, or null when this is the call that fails.
    template<typename Object>
    Object* give(Object* object)
    {
        if (next_call_fails() || !object)
            return nullptr;
        object->add_reference();
        return object;
    }

    // Counts a call that may fail and says whether it does. Throws instead if it is to fail that
    // way.
    bool next_call_fails();
    const Call_failure& failure() const { return m_failure; }

    void write(const std::string& line);
    void write_fault(const std::string& fault) { m_faults.push_back(fault); }

    void set_failing_call(int number, const Call_failure& failure)
    {
        m_failing_call = number;
        m_failure = failure;
    }
    void set_keeps_log(bool keeps_log) { m_keeps_log = keeps_log; }

    const std::vector<std::string>& log() const { return m_log; }
    int fallible_calls() const { return m_fallible_calls; }
    std::vector<std::string> problems() const;

private:
    std::vector<std::unique_ptr<Recorded_object>> m_objects;
    std::vector<std::string> m_log;
    std::vector<std::string> m_faults;
    int m_fallible_calls = 0;
    int m_failing_call = 0;
    Call_failure m_failure;
    bool m_keeps_log = true;
};

// A fake of an interface, whose first four operations are the same for all of them.
template<typename Base_interface>
class Recorded : public Base_interface, public Recorded_object
{
public:
    using Recorded_object::Recorded_object;

    void reference() const override
    {
        record("reference()");
        add_reference();
    }

    void release() const override { count_release(); }

    TSDK::Interface* get_interface(int id) override
    {
        record("get_interface(" + std::to_string(id) + ")");
        return nullptr;
    }

    int get_interface_target() const override
    {
        record("get_interface_target()");
        return 0;
    }
};

} // namespace TEST
} // namespace QZ

#endif
