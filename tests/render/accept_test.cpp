// The script that shows exported files to outside compilers: each of them must accept good files
// and refuse broken ones, so that its verdict means something. Absent compilers skip their tests.
#include "reference_host/system/process.h"
#include "tests/render/test_files.h"

#include <cstdlib>
#include <filesystem>
#include <gmock/gmock.h>

namespace reference_host
{

namespace
{

using testing::HasSubstr;

std::string validators_folder()
{
    const char* const folder = std::getenv("TOVIRAEXPORT_VALIDATORS");
    return folder ? folder : VALIDATORS_FOLDER;
}

bool has_checker(const std::string& name)
{
    return std::filesystem::exists(validators_folder() + "/bin/" + name);
}

Process_result accept(std::vector<std::string> arguments,
                      const std::string& validators = validators_folder())
{
    std::vector<std::string> command = {"env", "TOVIRAEXPORT_VALIDATORS=" + validators,
                                        SOURCE_FOLDER "/scripts/accept.sh"};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return run_program(command);
}

// A fixture with one mistake, and the check that must find it.
struct Mistake {
    const char* kind;
    const char* fixture;
    const char* old_text;
    const char* new_text;
    const char* checker; // its program; the test asks nothing where it is absent
    const char* verdict; // beginning of the line that it prints
};

constexpr Mistake mistakes[] = {
    {"cgfx", "plain.cgfx", "DepthFunc = LEqual", "DepthFunk = LEqual", "fxcheck",
     "refused: fxcheck: "},
    {"cgfx", "plain.cgfx", "MinFilter", "MinFiltre", "fxcheck", "refused: fxcheck: "},
    {"cgfx", "plain.cgfx", "fp40 fragment_main", "fp40 fragment_mane", "fxcheck",
     "refused: fxcheck: "},
    {"cgfx", "plain.cgfx", "FragmentProgram = compile fp40 fragment_main();", "", "fxcheck",
     "refused: fxcheck: "},
    {"cgfx", "plain.cgfx", "technique T0", "struct T0", "fxcheck", "refused: fxcheck: "},
    {"cgfx", "plain.cgfx", "return result;", "return result);", "fxcheck", "refused: fxcheck: "},
    {"hlsl", "plain.fx", "ZFunc", "DepthFunc", "fxcheck", "refused: fxcheck: "},
    {"hlsl", "plain.fx", "Texture = (base_map)", "Texture = <base_map>", "fxcheck",
     "refused: fxcheck: "},
    {"hlsl", "plain.fx", "Texture = (base_map)", "Texture = (bass_map)", "fxcheck",
     "refused: fxcheck: "},
    {"hlsl", "plain.fx", "float4x4 world :", "float4x4 world : VIEW; float4x4 world :", "fxcheck",
     "refused: fxcheck: "},
    {"cgfx", "plain.cgfx", "DepthFunc = LEqual", "DepthFunk = LEqual", "cgfxcheck",
     "refused: cgfxcheck: "},
    {"cgfx", "plain.cgfx", "LEqual", "LessEqualish", "cgfxcheck", "refused: cgfxcheck: "},
    {"cgfx", "plain.cgfx", "MinFilter", "MinFiltre", "cgfxcheck", "refused: cgfxcheck: "},
    {"cgfx", "plain.cgfx", "fp40 fragment_main", "fp40 fragment_mane", "cgfxcheck",
     "refused: cgfxcheck: "},
    {"cgfx", "plain.cgfx", "FragmentProgram = compile fp40 fragment_main();", "", "cgfxcheck",
     "refused: cgfxcheck: "},
    {"cgfx", "plain.cgfx", "* tint", "* tant", "cgfxcheck", "refused: cgfxcheck: "},
    {"cgfx", "plain.cgfx", "technique T0", "struct T0", "cgc", "refused: cgc -noentry: "},
    {"catia", "lights.cgfx", "struct SLightSpot : Light", "struct SLightSpot", "cgfxcheck",
     "refused: cgfxcheck -bind lights=SLightSpot: "},
    {"catia", "lights.cgfx", "struct SLightDir", "struct SLightSun", "cgfxcheck",
     "refused: cgfxcheck -bind lights=SLightDir: "},
    {"catia", "lights.cgfx", "__world_to_camera, LightDir", "__world_to_kamera, LightDir",
     "cgfxcheck", "refused: cgfxcheck"},
    {"hlsl", "plain.fx", "LessEqual", "LEqual", "cgfxcheck", "refused: cgfxcheck -hlsl: "},
    {"hlsl", "plain.fx", "ZFunc", "DepthFunc", "cgfxcheck", "refused: cgfxcheck -hlsl: "},
    {"hlsl", "plain.fx", "Texture = (base_map)", "Texture = <base_map>", "hlslcheck",
     "refused: hlslcheck: "},
    {"hlsl", "plain.fx", "vs_3_0 vertex_main", "vs_3_0 vertex_mane", "hlslcheck",
     "refused: hlslcheck: "},
    {"hlsl", "plain.fx", "float4x4 world :", "#ifdef _MAX_\nerror\n#endif\nfloat4x4 world :",
     "hlslcheck", "refused: hlslcheck -D _MAX_: "},
    {"hlsl", "plain.fx", "Fragment_in fragment)", "Fragment_in fragment, float f : FACE)",
     "hlslcheck", "refused: hlslcheck: "},
    {"glsl", "plain_v.gl", "vec3 vertex_normal", "float3 vertex_normal", "",
     "refused: glslangValidator -S vert: "},
    {"glsl", "plain_f.gl", "texture(base_map", "tex2D(base_map", "",
     "refused: glslangValidator -S frag: "},
    {"glsl", "plain_v.gl", "out vec3 fragment_normal", "out vec4 fragment_normal", "",
     "refused: glslangValidator -"},
    {"glsl", "plain_v.gl", "fragment_normal = world_view_it * vertex_normal;", "", "glslcheck",
     "refused: glslcheck: "},
};

TEST(Accept, every_checker_refuses_its_mistakes)
{
    const Test_folder folder;
    for (const Mistake& row : mistakes) {
        if (*row.checker && !has_checker(row.checker))
            continue;
        SCOPED_TRACE(std::string(row.fixture) + ": " + row.new_text);
        const std::string changed =
            folder.write(row.fixture, changed_fixture(row.fixture, row.old_text, row.new_text));
        std::vector<std::string> arguments = {row.kind, changed};
        if (std::string(row.fixture) == "plain_v.gl")
            arguments.push_back(fixture("plain_f.gl"));
        else if (std::string(row.fixture) == "plain_f.gl")
            arguments.insert(arguments.begin() + 1, fixture("plain_v.gl"));
        const Process_result result = accept(arguments);
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.output, HasSubstr(row.verdict));
    }
    if (!has_checker("cgfxcheck") || !has_checker("hlslcheck") || !has_checker("glslcheck"))
        GTEST_SKIP() << "not all checkers are there; scripts/fetch-validators.sh brings them";
}

struct Good_files {
    std::vector<std::string> arguments;
    const char* checker;
    const char* verdicts;
};

TEST(Accept, good_files_are_accepted_by_every_checker)
{
    const Good_files cases[] = {
        {{"cgfx", fixture("plain.cgfx")}, "cgfxcheck", "accepted: fxcheck\naccepted: cgfxcheck\n"},
        {{"catia", fixture("lights.cgfx")},
         "cgfxcheck",
         "accepted: fxcheck\n"
         "accepted: cgfxcheck\n"
         "accepted: cgfxcheck -bind lights=SLightDir\n"
         "accepted: cgfxcheck -bind lights=SLightPoint\n"
         "accepted: cgfxcheck -bind lights=SLightSpot\n"
         "accepted: cgfxcheck -bind lights=SLightDir,SLightPoint,SLightSpot\n"},
        {{"hlsl", fixture("plain.fx")},
         "hlslcheck",
         "accepted: fxcheck\n"
         "accepted: cgfxcheck -hlsl\n"
         "accepted: hlslcheck\n"
         "accepted: cgfxcheck -hlsl -D _MAX_\n"
         "accepted: hlslcheck -D _MAX_\n"},
        {{"glsl", fixture("plain_v.gl"), fixture("plain_f.gl")},
         "glslcheck",
         "accepted: glslangValidator -S vert\n"
         "accepted: glslangValidator -S frag\n"
         "accepted: glslangValidator -l\n"
         "accepted: glslcheck\n"},
    };
    bool skipped = false;
    for (const Good_files& row : cases) {
        skipped = skipped || !has_checker(row.checker);
        if (!has_checker(row.checker))
            continue;
        const Process_result result = accept(row.arguments);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.output, row.verdicts);
    }
    if (skipped)
        GTEST_SKIP() << "not all checkers are there; scripts/fetch-validators.sh brings them";
}

TEST(Accept, an_effect_without_technique_is_compiled_as_a_whole)
{
    if (!has_checker("cgc"))
        GTEST_SKIP() << "cgc is absent; scripts/fetch-validators.sh brings it";
    const Test_folder folder;
    const Process_result result =
        accept({"cgfx", folder.write("volume.cgfx", "interface Volume { float3 eval(float3 c); };\n"
                                                    "struct Fog : Volume { float3 eval(float3 c) "
                                                    "{ return c * 0.5; } };\n")});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "accepted: fxcheck\naccepted: cgc -noentry\n");
}

TEST(Accept, what_the_hlsl_compiler_does_not_know_is_undecided)
{
    if (!has_checker("hlslcheck"))
        GTEST_SKIP() << "hlslcheck is absent; scripts/fetch-validators.sh brings it";
    const Test_folder folder;
    const Process_result result = accept(
        {"hlsl", folder.write("plain.fx", changed_fixture("plain.fx", "float lit = max(",
                                                          "float lit = sign(lamp_position.x) "
                                                          "* max("))});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, HasSubstr("undecided: hlslcheck: "));
    EXPECT_THAT(result.output, HasSubstr("accepted: cgfxcheck -hlsl\n"));
}

TEST(Accept, absent_checkers_are_named_with_what_brings_them)
{
    const Process_result result = accept({"cgfx", fixture("plain.cgfx")}, "/nonexistent");
    EXPECT_EQ(result.status, 77);
    EXPECT_EQ(result.output,
              "skipped: fxcheck is absent; the build brings it\n"
              "skipped: cgfxcheck is absent; scripts/fetch-validators.sh brings it\n");
}

TEST(Accept, sources_go_to_the_compiler_of_the_system)
{
    const Test_folder folder;
    const Process_result good = accept({"cpp", folder.write("a.txt", "int f() { return 1; }\n")});
    EXPECT_EQ(good.status, 0);
    EXPECT_EQ(good.output, "accepted: g++\n");
    const Process_result bad = accept({"cpp", folder.write("a.txt", "int f() { return x; }\n")});
    EXPECT_EQ(bad.status, 1);
    EXPECT_THAT(bad.output, HasSubstr("refused: g++: "));
    EXPECT_THAT(bad.output, HasSubstr("was not declared"));
}

TEST(Accept, missing_files_are_refused_and_wrong_usage_is_status_2)
{
    EXPECT_EQ(accept({"cgfx", "/nonexistent.cgfx"}).status, 1);
    EXPECT_EQ(accept({"cgfx", fixture("")}).status, 1);
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {}, {"cgfx"}, {"glsl", "a"}, {"cgfx", "a", "b"}, {"other", "a"}})
        EXPECT_EQ(accept(arguments).status, 2);
}

} // namespace

} // namespace reference_host
