#include "reference_host/window/workspace.h"

#include "reference_host/app/export_item.h"
#include "reference_host/app/output_place.h"
#include "reference_host/app/render_export.h"
#include "reference_host/output/file_names.h"
#include "reference_host/window/command_text.h"
#include "reference_host/window/document_memory.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>

namespace reference_host
{
namespace
{

namespace fs = std::filesystem;

Message_kind kind_of(Severity severity)
{
    return severity == Severity::error ? Message_kind::error : Message_kind::warning;
}

std::string word_of(Exported_file::State state)
{
    return state == Exported_file::State::written     ? "Written"
           : state == Exported_file::State::unchanged ? "Unchanged"
                                                      : "Left as it was";
}

Export_outcome failure(const std::string& reason)
{
    Export_outcome outcome;
    outcome.reasons.push_back(reason);
    return outcome;
}

Run_result failed_run(const std::string& reason)
{
    return {failure(reason), {{Severity::error, reason, {}}}};
}

} // namespace

Workspace::Workspace(const Plugin_library& plugin, Document_memory& memory, Scene_request usual)
    : m_kept(plugin),
      m_memory(memory),
      m_usual(std::move(usual)),
      m_exporters(plugin.exporter_names())
{
}

Workspace::~Workspace() = default;

void Workspace::listen(std::function<void(Change)> listener)
{
    m_listeners.push_back(std::move(listener));
}

void Workspace::tell(Change change)
{
    for (const auto& listener : m_listeners)
        listener(change);
}

void Workspace::remember() const
{
    if (m_current)
        m_memory.store(*m_current);
}

// ---- documents

void Workspace::read(Work_document& document)
{
    document.content = read_materialx(document.scene.document, document.scene.search_path);
}

void Workspace::open(const std::string& file)
{
    const std::string path = fs::absolute(file).lexically_normal().string();
    const auto known = std::find_if(m_documents.begin(), m_documents.end(), [&](const auto& other) {
        return other->scene.document == path;
    });
    if (known != m_documents.end())
        return select(**known, (*known)->scene.node);
    auto document = std::make_unique<Work_document>();
    document->scene = m_usual;
    document->scene.document = path;
    document->exporter = m_exporters.empty() ? std::string() : m_exporters.front();
    m_memory.load(*document);
    if (std::find(m_exporters.begin(), m_exporters.end(), document->exporter) == m_exporters.end())
        document->exporter = m_exporters.empty() ? std::string() : m_exporters.front();
    read(*document);
    m_current = m_documents.emplace_back(std::move(document)).get();
    m_export_messages.clear();
    tell(Change::current);
    tell(Change::documents);
}

void Workspace::close_current()
{
    const auto closed = std::find_if(m_documents.begin(), m_documents.end(),
                                     [&](const auto& other) { return other.get() == m_current; });
    if (closed == m_documents.end())
        return;
    remember();
    const auto next = m_documents.erase(closed);
    m_current = next != m_documents.end() ? next->get()
                : m_documents.empty()     ? nullptr
                                          : m_documents.back().get();
    tell(Change::current);
    tell(Change::documents);
}

void Workspace::reload(const Work_document& document)
{
    for (const auto& own : m_documents) {
        if (own.get() == &document)
            read(*own);
    }
    tell(Change::current);
    tell(Change::documents);
}

void Workspace::select(const Work_document& document, const std::string& node)
{
    for (const auto& own : m_documents) {
        if (own.get() != &document)
            continue;
        if (own.get() != m_current)
            m_export_messages.clear();
        m_current = own.get();
        m_current->scene.node = node;
        m_pointed_out.clear();
    }
    remember();
    tell(Change::current);
}

void Workspace::point_out(const std::string& node)
{
    m_pointed_out = node;
    tell(Change::pointed);
}

// ---- choices

void Workspace::choose_exporter(const std::string& name)
{
    if (!m_current || m_current->exporter == name)
        return;
    m_current->exporter = name;
    remember();
    tell(Change::exporter);
}

const Exporter_choice& Workspace::choice() const
{
    static const Exporter_choice none;
    if (!m_current)
        return none;
    const auto found = m_current->choices.find(m_current->exporter);
    return found == m_current->choices.end() ? none : found->second;
}

void Workspace::set_choice(const Exporter_choice& choice)
{
    if (!m_current)
        return;
    Exporter_choice& own = m_current->choices[m_current->exporter];
    own = choice;
    if (own.output == m_current->usual_output())
        own.output.clear(); // goes on following the node
    remember();
    tell(Change::options);
}

void Workspace::set_scene(const Scene_request& scene)
{
    if (!m_current)
        return;
    const bool is_searched_elsewhere = scene.search_path != m_current->scene.search_path;
    m_current->scene = scene;
    remember();
    if (is_searched_elsewhere)
        return reload(*m_current);
    tell(Change::scene);
}

void Workspace::set_untouched_options(const std::vector<Option_setting>& options)
{
    if (m_current)
        m_untouched[m_current->exporter] = options;
}

Scene_request Workspace::request(const std::string& exporter) const
{
    Scene_request request = m_current->scene;
    if (const Node* node = m_current->node())
        request.node = full_name(*node);
    const auto choice = m_current->choices.find(exporter);
    if (choice != m_current->choices.end())
        request.options = choice->second.options;
    return request;
}

std::string Workspace::command_line() const
{
    if (!m_current)
        return std::string();
    Scene_request shown = request(m_current->exporter);
    const auto untouched = m_untouched.find(m_current->exporter);
    if (untouched != m_untouched.end())
        shown.options = changed_options(shown.options, untouched->second);
    return export_command_text(shown, m_current->exporter, m_current->output());
}

// ---- what comes of it

Run_result Workspace::run(const std::string& exporter, const std::string& output,
                          Scene_request request, Replacement& replacement)
{
    try {
        const Opened_document document(request);
        const Kept_exporter& kept = m_kept.get(exporter);
        request.options.insert(request.options.begin(), kept.untouched.begin(),
                               kept.untouched.end());
        Export_outcome outcome = run_export(document, *kept.exporter, output, request, replacement);
        std::vector<Message> messages = messages_of(outcome, document);
        return {std::move(outcome), std::move(messages)};
    } catch (const Failure& problems) {
        m_kept.give_up(exporter);
        return {failure(problems.what()), problems.messages()};
    } catch (const std::exception& error) {
        m_kept.give_up(exporter);
        return failed_run(error.what());
    }
}

Listed_message Workspace::listed(const Message& message) const
{
    const Node* node = m_current ? m_current->node_at(message.place) : nullptr;
    return {kind_of(message.severity), message.text, message.place,
            node ? full_name(*node) : std::string()};
}

void Workspace::renew_messages()
{
    m_messages = m_export_messages;
    if (m_current) {
        for (const Document_problem& problem : m_current->content.problems)
            m_messages.push_back({Message_kind::error, problem.text, problem.place, {}});
    }
    m_messages.insert(m_messages.end(), m_trial_messages.begin(), m_trial_messages.end());
    tell(Change::messages);
}

void Workspace::run_trial()
{
    m_code.clear();
    m_trial_messages.clear();
    if (m_current && m_current->node()) {
        Scene_request trial = request(m_current->exporter);
        trial.is_dry_run = true;
        trial.boxes = {};
        Replacement replacement({Overwrite::yes, true});
        const Run_result result = run(m_current->exporter, m_current->output(), trial, replacement);
        for (const Exported_file& file : result.outcome.files)
            m_code.push_back(
                {file.path, file.content, file.content.find('\0') == std::string::npos});
        for (const Message& message : result.messages)
            m_trial_messages.push_back(listed(message));
    }
    tell(Change::trial);
    renew_messages();
}

Run_result Workspace::run_for_picture(const std::string& exporter)
{
    if (!m_current || !m_current->node())
        return failed_run("there is no node to draw");
    Scene_request wanted = request(exporter);
    light_for_picture(wanted, *m_current->content.graph);
    wanted.is_dry_run = true;
    wanted.boxes = {};
    Replacement replacement({Overwrite::yes, true});
    return run(exporter, m_current->output(), wanted, replacement);
}

void Workspace::report_export(const std::string& exporter, const Run_result& result)
{
    std::vector<Listed_message> messages;
    if (!result.outcome.is_success()) {
        for (const Message& message : result.messages)
            messages.push_back(listed(message));
    }
    for (const Exported_file& file : result.outcome.files)
        messages.push_back({Message_kind::note,
                            word_of(file.state) + (": " + file.path) + ", " +
                                std::to_string(file.content.size()) + " bytes",
                            {},
                            {}});
    for (Listed_message& message : messages) {
        message.text = exporter + ": " + message.text;
        m_export_messages.push_back(message);
    }
}

Export_outcome Workspace::export_current(const Box_policy& boxes, Replacement& replacement)
{
    m_export_messages.clear();
    if (!m_current || !m_current->node())
        return failure("there is no node to export");
    Scene_request wanted = request(m_current->exporter);
    wanted.boxes = boxes;
    Run_result result = run(m_current->exporter, m_current->output(), wanted, replacement);
    report_export(m_current->exporter, result);
    renew_messages();
    return std::move(result.outcome);
}

Export_outcome Workspace::export_into(const std::string& folder, const std::string& exporter,
                                      const Box_policy& boxes, Replacement& replacement)
{
    if (!m_current || !m_current->node())
        return failure("there is no node to export");
    Scene_request wanted = request(exporter);
    wanted.boxes = boxes;
    Run_result result;
    try {
        const std::string own = (fs::path(folder) / folder_name(exporter)).string();
        make_folder(own);
        result = run(exporter, export_file_name(own, m_current->node()->name), wanted, replacement);
    } catch (const std::exception& error) {
        result = failed_run(error.what());
    }
    report_export(exporter, result);
    renew_messages();
    return std::move(result.outcome);
}

} // namespace reference_host
