// A host made of fakes: it answers as it is told, writes every call down, and counts references.
//
// Life of one:
//   1. Fill in the script: nodes (add_node), selection, lights, preferences, codes, failures.
//   2. Hand app() and view(), or single objects, to the code under test.
//   3. Ask what happened: log(), options(), problems().
//
// Objects live as long as their host, released or not, so that a call on a released object is a
// named fault and no crash.
#ifndef REFERENCE_HOST_RECORDING_HOST_H
#define REFERENCE_HOST_RECORDING_HOST_H

#include "reference_host/recording_host/recorder.h"
#include "sdk/igraph_node.h"
#include "sdk/igraph_view.h"
#include "sdk/itovira.h"
#include "sdk/itovira_compiler.h"

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace QZ
{
namespace TEST
{

// A text that the host returns; std::nullopt is a null pointer.
using Text = std::optional<std::string>;

// A node of the graph, with its declaration and, for a group, its members. A null pointer among the
// connections is a connection without a source; among the members, a missing member.
struct Scripted_node {
    Text name;
    Text kind = "surface";
    bool is_group = false;
    bool is_material = false;
    std::vector<Scripted_node*> members;
    std::vector<std::vector<Scripted_node*>> inputs; // for each input its connections
    std::set<std::string> parameters;
    std::set<std::string> functions;

    // Connects `source` (may be null) to a new input.
    void connect(Scripted_node* source) { inputs.push_back({source}); }
};

struct Scripted_light {
    Scripted_node* node; // null: the host has lost it
    int type;
    float spread;
    float distance_limit;
};

// Option names and values in the order in which they were set.
using Options = std::vector<std::pair<std::string, std::string>>;

struct Host_fakes;

class Recording_host
{
public:
    Recording_host();
    ~Recording_host();
    Recording_host(const Recording_host&) = delete;
    Recording_host& operator=(const Recording_host&) = delete;

    // ---- the script

    // A node of the kind "surface", which the host owns. It is not selected.
    Scripted_node& add_node(const Text& name);

    // Adds a node and selects it, too.
    Scripted_node& add_selected_node(const Text& name);

    // Assigns a light in the render settings; returns its node.
    Scripted_node& add_light(const Text& name, int type = 0, float spread = 0.0f,
                             float distance_limit = 0.0f);

    std::vector<Scripted_node*> selection;
    std::vector<Scripted_light> lights;
    Scripted_node* environment = nullptr;
    Scripted_node* volume = nullptr;
    float ambient[4] = {0.0f, 0.0f, 0.0f, 1.0f};
    std::vector<Text> search_paths;
    bool has_preferences = true;
    std::map<std::string, bool> preferences;
    bool compiles = true;
    bool generates = true;
    std::vector<std::string> codes = {"code 0\n", "code 1\n"}; // of every generated shader
    std::set<std::string> states;                              // what uses_state says yes to

    // The number, counted from 1, of the one call that fails: an object or a text comes back as
    // null, a code is not copied, a preference is absent. 0: none.
    void set_failing_call(int number, const Call_failure& failure = {});

    // The same, but the call throws std::bad_alloc.
    void set_throwing_call(int number);

    // Turns the log off for graphs so large that it would be, too.
    void set_keeps_log(bool keeps_log);

    // ---- what the code under test is given

    // Lent: the caller does not release them.
    TSDK::ITovira* app();
    TSDK::IGraph_view* view();
    TSDK::ITovira_compiler* compiler();
    TSDK::ICompiler_errors* errors();
    TSDK::ICompilation_unit* make_unit();
    TSDK::IGraph_node* node(const Scripted_node& script);
    TSDK::ICompiler_options* make_options();
    TSDK::IGenerated_shader* make_shader();

    // ---- what happened

    // Every call in order: "object.operation(arguments)". Objects are named by their kind ("app",
    // "view", "compiler", "preferences", "errors", "graph"), by kind and number in the order of
    // their making ("options 1", "unit 1", "shader 1"), nodes by their name, and "declaration of",
    // "group of", "inputs of", "connections of" a node.
    const std::vector<std::string>& log() const;

    // The calls that begin with a text.
    std::vector<std::string> calls(const std::string& beginning) const;

    // The names of the released objects, in order.
    std::vector<std::string> releases() const;

    // What was set on the n-th option set, counted from 1; empty when there is none.
    Options options(int number) const;

    // How many calls could have failed so far.
    int fallible_calls() const;

    // What the caller did wrong: "released twice: X", "released though lent: X", "used after
    // release: X.call", "handed on after release: X", "never released: X". Empty when all is well.
    std::vector<std::string> problems() const;

private:
    std::unique_ptr<Host_fakes> m_fakes;
    std::vector<std::unique_ptr<Scripted_node>> m_nodes;
};

// The value of an option, the last one if it was set repeatedly; "<not set>" when it was not.
std::string option_value(const Options& options, const std::string& name);

} // namespace TEST
} // namespace QZ

#endif
