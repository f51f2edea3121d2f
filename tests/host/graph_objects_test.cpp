#include "reference_host/document/materialx_reader.h"
#include "reference_host/host/export_session.h"
#include "sdk/interface_ids.h"
#include "tests/host/documents.h"

#include <gmock/gmock.h>

using namespace reference_host;
using namespace QZ::TSDK;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace
{

constexpr const char* scene_elements = R"(
    <point_light name="lamp" type="lightshader"/>
    <constant name="paint" type="color3"/>
    <standard_surface name="shader" type="surfaceshader">
      <input name="base" type="float" value="1"/>
      <input name="base_color" type="color3" nodename="paint"/>
    </standard_surface>
    <surfacematerial name="material" type="material">
      <input name="surfaceshader" type="surfaceshader" nodename="shader"/>
    </surfacematerial>
    <surfacematerial name="empty" type="material"/>)";

class Session : public testing::Test
{
protected:
    Session()
    {
        const Temporary_folder folder;
        m_graph = read_materialx(folder.write("scene.mtlx", document(scene_elements)), {}).graph;
        m_scene.graph = m_graph.get();
        m_scene.selection = {m_graph->find_node("material")};
        m_scene.render_settings = make_render_settings(*m_graph, {});
        m_scene.search_paths = {"/a", "/b"};
    }

    Export_session& start()
    {
        m_session = std::make_unique<Export_session>(m_scene);
        return *m_session;
    }

    std::vector<std::string> findings() { return m_session->reference_findings({}); }

    std::unique_ptr<Shader_graph> m_graph;
    Export_scene m_scene;
    std::unique_ptr<Export_session> m_session;
};

} // namespace

TEST_F(Session, a_node_is_always_the_same_object)
{
    IGraph_view* view = start().view();
    IGraph_node* first = view->get_selected_node(0);
    IGraph_node* second = view->get_selected_node(0);
    EXPECT_EQ(first, second);
    first->release();
    second->release();
    EXPECT_THAT(findings(), IsEmpty());
}

TEST_F(Session, a_material_is_a_group_with_a_borrowed_member_named_surface)
{
    IGraph_node* node = start().view()->get_selected_node(0);
    IShader_declaration* declaration = node->get_declaration();
    auto* group = static_cast<IShader_group*>(declaration->get_interface(INTERFACE_SHADER_GROUP));
    ASSERT_TRUE(group);
    EXPECT_TRUE(group->is_material());
    ASSERT_EQ(1, group->get_num_members());
    IGraph_node* member = group->get_member(0);
    EXPECT_STREQ("surface", member->get_name());
    IShader_declaration* shader = member->get_declaration();
    EXPECT_EQ(nullptr, shader->get_interface(INTERFACE_SHADER_GROUP));
    EXPECT_EQ(nullptr, group->get_member(1));
    EXPECT_EQ(nullptr, group->get_member(-1));
    for (Interface* object : {static_cast<Interface*>(shader), static_cast<Interface*>(group),
                              static_cast<Interface*>(declaration), static_cast<Interface*>(node)})
        object->release();
    EXPECT_THAT(findings(), IsEmpty());
}

TEST_F(Session, a_member_that_is_released_although_borrowed_is_a_finding)
{
    IGraph_node* node = start().view()->get_selected_node(0);
    IShader_declaration* declaration = node->get_declaration();
    auto* group = static_cast<IShader_group*>(declaration->get_interface(INTERFACE_SHADER_GROUP));
    group->get_member(0)->release();
    group->release();
    declaration->release();
    node->release();
    EXPECT_THAT(findings(), ElementsAre(HasSubstr("graph node 'surface' was released more often")));
}

TEST_F(Session, a_material_without_a_shader_is_a_group_without_members)
{
    m_scene.selection = {m_graph->find_node("empty")};
    IShader_declaration* declaration = start().view()->get_selected_node(0)->get_declaration();
    auto* group = static_cast<IShader_group*>(declaration->get_interface(INTERFACE_SHADER_GROUP));
    ASSERT_TRUE(group);
    EXPECT_EQ(0, group->get_num_members());
}

TEST_F(Session, the_inputs_of_a_node_lead_to_its_sources)
{
    m_scene.selection = {m_graph->find_node("shader")};
    IGraph_node* node = start().view()->get_selected_node(0);
    IInput_iterator* inputs = node->get_input_iterator(0);
    std::vector<std::string> sources;
    int count = 0;
    for (inputs->reset(); !inputs->at_end(); inputs->next(1), ++count) {
        IConnection_iterator* connections = inputs->get_connections();
        for (connections->reset(); !connections->at_end(); connections->next(1)) {
            IGraph_node* source = connections->get_source_node();
            sources.push_back(source->get_name());
            source->release();
        }
        connections->release();
    }
    inputs->release();
    node->release();
    EXPECT_EQ(2, count);
    EXPECT_THAT(sources, ElementsAre("paint"));
    EXPECT_THAT(findings(), IsEmpty());
}

TEST_F(Session, the_view_shows_the_render_settings)
{
    m_scene.render_settings.ambient = {0.1f, 0.2f, 0.3f, 1.0f};
    IGraph_view* view = start().view();
    EXPECT_EQ(1u, view->get_num_lights());
    EXPECT_EQ(1, view->get_light_type(0));
    IGraph_node* light = view->get_light(0);
    EXPECT_STREQ("lamp", light->get_name());
    EXPECT_STREQ("light", light->get_shader_type());
    light->release();
    EXPECT_EQ(nullptr, view->get_light(1));
    EXPECT_EQ(nullptr, view->get_environment_shader());
    EXPECT_EQ(nullptr, view->get_selected_node(1));
    float ambient[4];
    view->get_scene_ambient(ambient);
    EXPECT_FLOAT_EQ(0.2f, ambient[1]);
    EXPECT_THAT(findings(), IsEmpty());
}

TEST_F(Session, the_selected_node_tells_the_kind_that_the_user_sets)
{
    m_scene.kind = {Shader_kind_answer::From::fixed, "lens"};
    EXPECT_STREQ("lens", start().view()->get_selected_node(0)->get_shader_type());
    m_scene.kind = {Shader_kind_answer::From::none, ""};
    EXPECT_EQ(nullptr, start().view()->get_selected_node(0)->get_shader_type());
}

TEST_F(Session, the_application_gives_search_paths_and_preferences)
{
    m_scene.preferences.values["cg_flip_tex2d_v"] = true;
    ITovira* application = start().application();
    int count = 0;
    const char** paths = application->get_search_paths(count);
    ASSERT_EQ(2, count);
    EXPECT_STREQ("/b", paths[1]);
    auto* preferences =
        static_cast<IPreferences*>(application->get_interface(INTERFACE_PREFERENCES));
    bool value = false;
    EXPECT_TRUE(preferences->get_bool_preference("cg_flip_tex2d_v", &value));
    EXPECT_TRUE(value);
    EXPECT_FALSE(preferences->get_bool_preference("other", &value));
    EXPECT_TRUE(value) << "unchanged";
    preferences->release();
    EXPECT_THAT(findings(), IsEmpty());
}

TEST_F(Session, the_application_may_have_no_preferences)
{
    m_scene.preferences.exist = false;
    EXPECT_EQ(nullptr, start().application()->get_interface(INTERFACE_PREFERENCES));
}

TEST_F(Session, the_compiler_refuses_what_is_not_the_hosts)
{
    auto* compiler =
        static_cast<ITovira_compiler*>(start().application()->get_interface(INTERFACE_COMPILER));
    EXPECT_EQ(nullptr, compiler->compile(nullptr, nullptr, nullptr));
    EXPECT_EQ(nullptr, compiler->compile_shader(nullptr, nullptr, 0));
    compiler->release();
    EXPECT_EQ(2u, m_session->record().wrong_uses.size());
}

TEST_F(Session, kept_references_are_excused_only_when_their_condition_holds)
{
    start().view()->get_selected_node(0);
    EXPECT_EQ(1u, m_session->reference_findings({}).size());
    Export_events events;
    events.file_name_empty = true;
    EXPECT_THAT(m_session->reference_findings(events), IsEmpty());
}
