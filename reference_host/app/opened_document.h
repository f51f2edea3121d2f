// A document as the host opens it: read, its node chosen, its scene set up.
#ifndef REFERENCE_HOST_APP_OPENED_DOCUMENT_H
#define REFERENCE_HOST_APP_OPENED_DOCUMENT_H

#include "reference_host/app/export_request.h"
#include "reference_host/app/messages.h"
#include "reference_host/host/export_scene.h"

#include <memory>
#include <string>
#include <vector>

namespace reference_host
{

// Reads a document. Throws Failure with all that is wrong with it.
std::unique_ptr<Shader_graph> open_document(const std::string& file,
                                            const std::vector<std::string>& search_path);

// What a document has to show, outside of its node graphs: its surface materials, or its surface
// shaders when it has no material.
std::vector<const Node*> shown_nodes(const Shader_graph& graph);

// The node that an export is about when none is named: the first of these; null when there is none.
const Node* default_node(const Shader_graph& graph);

// The message about a node that the document does not have: the one that may be meant, and those
// that can be exported.
std::string no_such_node(const Shader_graph& graph, const std::string& name);

class Opened_document
{
public:
    // Throws Failure when the document cannot be read or has nothing to export, and
    // std::invalid_argument when a name that the user gave does not fit the document.
    explicit Opened_document(const Scene_request& request);

    // The same for a document that was read before. Several may share one when their scenes are
    // equal: lights that it does not have become its own.
    Opened_document(const Scene_request& request, std::shared_ptr<Shader_graph> graph);

    const Node& node() const { return *m_node; }

    // What the user should know of the scene: included files and images that are missing, an
    // environment or a volume that the document does not have.
    const std::vector<Message>& warnings() const { return m_warnings; }

    // All files that an export depends on: the documents, the images that they name, and the user's
    // files in the search path. Some may not exist.
    std::vector<std::string> inputs() const;

    // Where its images may lie.
    const Image_folders& images() const { return m_images; }

    // The scene of an export whose images get these names. Refers to both.
    Export_scene scene(Image_names& images) const;

private:
    // Whether the node is not the document's own.
    static bool is_made(const Node& node);

    void warn(const std::string& text, const Place& place);
    void warn_of_missing_images(const Node& start);

    Scene_request m_request;
    std::shared_ptr<Shader_graph> m_graph;
    const Node* m_node = nullptr;
    Image_folders m_images;
    std::vector<Message> m_warnings;
    Render_settings m_render_settings;
};

} // namespace reference_host

#endif
