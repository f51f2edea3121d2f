// What the fakes of the recording host share. Only reference_host/recording_host/recording_host.cpp
// includes this and the fakes themselves.
#ifndef REFERENCE_HOST_RECORDING_HOST_HOST_FAKES_H
#define REFERENCE_HOST_RECORDING_HOST_HOST_FAKES_H

#include "reference_host/recording_host/recorder.h"
#include "reference_host/recording_host/recording_host.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace QZ
{
namespace TEST
{

class Fake_compiler;
class Fake_errors;
class Fake_graph;
class Fake_node;
class Fake_preferences;

inline std::string quoted(const char* text)
{
    return text ? '"' + std::string(text) + '"' : std::string("null");
}

inline std::string numbered(const char* kind, size_t number)
{
    return std::string(kind) + " " + std::to_string(number);
}

// An argument of a call, by its name in the log.
inline std::string argument(const TSDK::Interface* object)
{
    if (!object)
        return "null";
    const auto* recorded = dynamic_cast<const Recorded_object*>(object);
    return recorded ? recorded->name_as_argument() : "foreign object";
}

// The fakes' common ground: the script, the records, and the fake of each node.
struct Host_fakes {
    explicit Host_fakes(const Recording_host& host) : script(host) {}

    // Hands a text out, or what stands for it when this is a call that fails.
    const char* give_text(const Text& text)
    {
        if (recorder.next_call_fails())
            return failed_text();
        return text ? text->c_str() : nullptr;
    }

    const char* failed_text()
    {
        switch (recorder.failure().text) {
        case Failed_text::empty:
            return "";
        case Failed_text::garbage:
            return garbage.c_str();
        case Failed_text::null:
            break;
        }
        return nullptr;
    }

    Fake_node* find_node(const Scripted_node* node);
    TSDK::IGraph_node* give_node(const Scripted_node* node);

    // Makes an object of a numbered kind and hands it out, or null when this is the call that
    // fails.
    template<typename Object>
    Object* give_numbered(const char* kind, size_t& count)
    {
        return recorder.give(recorder.make<Object>(*this, numbered(kind, ++count)));
    }

    const Recording_host& script;
    Recorder recorder;
    std::unordered_map<const Scripted_node*, Fake_node*> nodes;
    std::vector<Options> options;
    std::vector<const char*> lent_paths;
    const std::string garbage = "%s%n \"\\\n\t" + std::string(300, '\xff');
    size_t option_set_count = 0;
    size_t unit_count = 0;
    size_t shader_count = 0;

    TSDK::ITovira* app = nullptr;
    TSDK::IGraph_view* view = nullptr;
    Fake_compiler* compiler = nullptr;
    Fake_preferences* preferences = nullptr;
    Fake_errors* errors = nullptr;
    Fake_graph* graph = nullptr;
};

template<typename Base_interface>
class Fake : public Recorded<Base_interface>
{
public:
    Fake(Host_fakes& fakes, const std::string& name)
        : Recorded<Base_interface>(fakes.recorder, name), m_fakes(fakes)
    {
    }

protected:
    Host_fakes& m_fakes;
};

} // namespace TEST
} // namespace QZ

#endif
