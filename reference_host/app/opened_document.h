// A document as the host opens it: read, its node chosen, its scene set up.
#ifndef REFERENCE_HOST_APP_OPENED_DOCUMENT_H
#define REFERENCE_HOST_APP_OPENED_DOCUMENT_H

#include "reference_host/app/export_request.h"
#include "reference_host/host/export_scene.h"

#include <memory>
#include <stdexcept>
#include <string>

namespace reference_host
{

// A document that cannot be used. The message is complete: "FILE:LINE: error: TEXT".
class Document_failure : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// Reads a document. Throws Document_failure.
std::unique_ptr<Shader_graph> open_document(const std::string& file,
                                            const std::vector<std::string>& search_path);

// The node that an export is about when none is named: the first surface material, else the first
// surface shader; null when there is neither.
const Node* default_node(const Shader_graph& graph);

// What to say of a node that the document does not have: the one that may be meant, and those that
// can be exported.
std::string no_such_node(const Shader_graph& graph, const std::string& name);

class Opened_document
{
public:
    // Throws Document_failure when the document cannot be read or has nothing to export, and
    // std::invalid_argument when a name that the user gave does not fit the document.
    explicit Opened_document(const Scene_request& request);

    // The same for a document that was read before. Several may share one when their scenes are
    // equal: lights that it does not have become its own.
    Opened_document(const Scene_request& request, std::shared_ptr<Shader_graph> graph);

    const Node& node() const { return *m_node; }

    // All files that an export depends on: the documents, the images that they name, and the user's
    // files in the search path. Some may not exist.
    std::vector<std::string> inputs() const;

    // The scene of an export to a file of that name. Refers to this object.
    Export_scene scene(const std::string& output) const;

private:
    Scene_request m_request;
    std::shared_ptr<Shader_graph> m_graph;
    const Node* m_node = nullptr;
    Render_settings m_render_settings;
};

} // namespace reference_host

#endif
