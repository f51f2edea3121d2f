// The two files that some exporters derive from the one chosen name.
#include "exporter_base/bytes.h"
#include "exporters/exporter_fxcomposer.h"
#include "exporters/exporter_generic.h"
#include "exporters/exporter_swrc.h"

#include <gtest/gtest.h>

namespace QZ
{
namespace TEST
{

using namespace TOVIRAEXPORT;

struct Name_case {
    const char* chosen;
    const char* first;
    const char* second;
};

TEST(Fx_composer_names, keep_an_extension_that_is_not_their_own)
{
    const Name_case cases[] = {
        {"/d/x", "/d/x.cgfx", "/d/x.fx"},
        {"/d/x.cgfx", "/d/x.cgfx", "/d/x.fx"},
        {"/d/x.fx", "/d/x.cgfx", "/d/x.fx"},
        {"/d/x.FX", "/d/x.FX.cgfx", "/d/x.FX.fx"}, // case-sensitive
        {"/d/x.CgFX", "/d/x.CgFX.cgfx", "/d/x.CgFX.fx"},
        {"x", "x.cgfx", "x.fx"},
        {"x.fx", "x.cgfx", "x.fx"},
        {"a.txt", "a.txt.cgfx", "a.txt.fx"},
        {"/d/a.fx.fx", "/d/a.fx.cgfx", "/d/a.fx.fx"},
        {"/d.fx/a", "/d.fx/a.cgfx", "/d.fx/a.fx"},
        {"rel/x.fx", "rel/x.cgfx", "rel/x.fx"},
        {"/d/\xff.fx", "/d/\xff.cgfx", "/d/\xff.fx"},
    };
    for (const Name_case& c : cases) {
        wxString cgfx;
        wxString fx;
        EXPECT_TRUE(Exporter_fxcomposer::update_filename(from_bytes(c.chosen), cgfx, fx));
        EXPECT_EQ(to_bytes(cgfx), c.first) << c.chosen;
        EXPECT_EQ(to_bytes(fx), c.second) << c.chosen;
    }
}

TEST(Glsl_names, keep_their_extension_and_lose_one_suffix)
{
    const Name_case cases[] = {
        // chosen, fragment, vertex
        {"/tmp/water.glsl", "/tmp/water_f.glsl", "/tmp/water_v.glsl"},
        {"/tmp/water_v.gl", "/tmp/water_f.gl", "/tmp/water_v.gl"},
        {"/out/a_f.glsl", "/out/a_f.glsl", "/out/a_v.glsl"},
        {"water", "water_f.gl", "water_v.gl"},
        {"water_f", "water_f.gl", "water_v.gl"},
        {"Water.GLSL", "Water.GLSL_f.gl", "Water.GLSL_v.gl"}, // case-sensitive
        {"shader.txt", "shader.txt_f.gl", "shader.txt_v.gl"},
        {"x_v_f.gl", "x_v_f.gl", "x_v_v.gl"}, // only the last suffix
        {"x_f_v.gl", "x_f_f.gl", "x_f_v.gl"},
        {"x_F.gl", "x_F_f.gl", "x_F_v.gl"},
        {"/d/_f.gl", "/d/_f.gl", "/d/_v.gl"},
        {"/d/x_v.txt", "/d/x_v.txt_f.gl", "/d/x_v.txt_v.gl"},
        {"/d/\xff_v.gl", "/d/\xff_f.gl", "/d/\xff_v.gl"},
    };
    for (const Name_case& c : cases) {
        wxString fragment;
        wxString vertex;
        Exporter_generic::update_glsl_filename(from_bytes(c.chosen), fragment, vertex);
        EXPECT_EQ(to_bytes(fragment), c.first) << c.chosen;
        EXPECT_EQ(to_bytes(vertex), c.second) << c.chosen;
    }
}

TEST(Renderer_source_names, keep_an_extension_that_is_not_their_own)
{
    const Name_case cases[] = {
        {"/p/scene", "/p/scene.qz", "/p/scene.cpp"},
        {"/p/scene.cpp", "/p/scene.qz", "/p/scene.cpp"},
        {"/p/scene.qz", "/p/scene.qz", "/p/scene.cpp"},
        {"/p/scene.txt", "/p/scene.txt.qz", "/p/scene.txt.cpp"},
        {"/p/scene.QZ", "/p/scene.QZ.qz", "/p/scene.QZ.cpp"}, // case-sensitive
        {"/home/u/untitled", "/home/u/untitled.qz", "/home/u/untitled.cpp"},
        {"scene", "scene.qz", "scene.cpp"},
    };
    for (const Name_case& c : cases) {
        wxString qz;
        wxString cpp;
        Exporter_swrc::update_filename(from_bytes(c.chosen), qz, cpp);
        EXPECT_EQ(to_bytes(qz), c.first) << c.chosen;
        EXPECT_EQ(to_bytes(cpp), c.second) << c.chosen;
    }
}

} // namespace TEST
} // namespace QZ
