// Hostile names and documents: whatever they hold, nothing is made or changed outside of the output
// folder.
#include "reference_host/desktop/virtual_display.h"
#include "reference_host/system/process.h"
#include "tests/host/documents.h"
#include "tests/host/folder_tree.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <iterator>
#include <map>
#include <random>
#include <regex>
#include <string>
#include <vector>

#include <sys/stat.h>

using namespace reference_host;

namespace
{

namespace fs = std::filesystem;

// As an attribute of XML: all bytes but letters and digits as their numbers, those above ASCII as
// they are.
std::string attribute(const std::string& text)
{
    std::string result;
    for (const unsigned char byte : text)
        result += std::isalnum(byte) || byte > 0x7F ? std::string(1, static_cast<char>(byte))
                                                    : "&#" + std::to_string(byte) + ";";
    return result;
}

class Containment : public testing::Test
{
protected:
    // The output folder lies deep in a tree in which every name of the way out leads to something.
    Containment()
    {
        fs::create_directories(m_output);
        for (const char* folder : {"home", "tmp", "in", "box/outside"})
            fs::create_directories(m_folder.file(folder));
        for (const char* file : {"precious", "box/precious", "box/way/precious", "in/precious",
                                 "home/precious", "precious.cgfx", "box/way/precious.cgfx"})
            m_folder.write(file, "precious");
    }

    std::vector<std::string> hostile_names() const
    {
        return {"/abs/path",
                m_folder.file("precious"),
                m_folder.file("box/outside/new"),
                "../precious",
                "../../precious",
                "../../../../../../../../../../tmp/escaped",
                "..",
                ".",
                "./.",
                "a/b",
                "a//b",
                "/",
                "//",
                "-x",
                "--output=/abs",
                ".hidden",
                ".shader-export",
                ".shader-export/ready-abcdef",
                "ready-abcdef",
                "x.~1~",
                "x.hash",
                "a\nb",
                "a\r\n\tb",
                "\n",
                "\x01\x1b[31m\x7f",
                "\xc0\xae\xc0\xae\xc0\xaf"
                "escaped",                  // "../escaped" in bytes that are not UTF-8
                "\xe2\x80\xae\xe2\x88\x95", // right to left, a slash of mathematics
                "\xff\xfe\x80",
                "..\\..\\precious",
                "C:\\x",
                "C:",
                "%2e%2e%2fescaped",
                "%s%s%n",
                "~",
                "~/x",
                "$HOME/x",
                "`touch escaped`",
                "$(touch escaped)",
                "x; touch escaped",
                "|touch escaped",
                "*",
                "?",
                "'",
                "\"",
                "<>&",
                " ",
                "{material}",
                "{exporter}/../{document}",
                std::string(300, 'x'),
                std::string(100, '/') + "x",
                std::string(100'000, 'y'),
                "a/" + std::string(255, 'z')};
    }

    // A material with an image, under hostile names.
    static std::string material(const std::string& name, const std::string& prefix,
                                const std::string& image)
    {
        const std::string here = attribute(name);
        return document(
            "<nodegraph name='g" + here + "' fileprefix='" + attribute(prefix) +
            "'><image name='i' type='color3'><input name='file' type='filename' value='" +
            attribute(image) + "'/></image><output name='o' type='color3' nodename='i'/>" +
            "</nodegraph>\n<standard_surface name='s" + here +
            "' type='surfaceshader'><input name='base_color' type='color3' nodegraph='g" + here +
            "' output='o'/></standard_surface>\n<surfacematerial name='" + here +
            "' type='material'><input name='surfaceshader' type='surfaceshader' nodename='s" +
            here + "'/></surfacematerial>\n");
    }

    // The name wherever a document has one.
    static std::string document_of(const std::string& name)
    {
        return material(name, name + "/", name);
    }

    // Odd documents of every kind, and files that are not documents, in the folder "in".
    void write_odd_documents() const;

    // Runs the program in the folder "in" and returns its exit status.
    int run(std::vector<std::string> arguments, const std::string& output)
    {
        std::vector<std::string> command = {"env",
                                            "-C",
                                            m_folder.file("in"),
                                            "HOME=" + m_folder.file("home"),
                                            "TMPDIR=" + m_folder.file("tmp"),
                                            SHADER_EXPORT};
        arguments.insert(arguments.end(),
                         {"--plugin", PLUGIN, "--overwrite", "yes", "--output", output});
        command.insert(command.end(), arguments.begin(), arguments.end());
        const Process_result result = run_program(command, {120, 0, std::size_t{32} << 20});
        EXPECT_EQ(Process_end::exit, result.end) << describe_end(result, {}) << "\n"
                                                 << result.output;
        m_said = result.output;
        return result.status;
    }

    // The output folder aside, everything is as it was.
    void expect_same(const std::map<std::string, std::string>& before) const
    {
        const auto after = tree_of(m_folder.path(), m_output);
        for (const auto& [path, what] : after) {
            const auto old = before.find(path);
            EXPECT_TRUE(old != before.end() && old->second == what)
                << path << " is new or changed\n"
                << m_said;
        }
        EXPECT_EQ(before.size(), after.size()) << "something is gone";
        EXPECT_FALSE(fs::exists("/abs"));
    }

    static std::size_t count_files(const std::string& folder, const std::string& extension)
    {
        std::size_t count = 0;
        for (const auto& entry : fs::recursive_directory_iterator(folder))
            count += entry.path().extension() == extension && entry.is_regular_file();
        return count;
    }

    Temporary_folder m_folder;
    std::string m_output = m_folder.file("box/way/out");
    std::string m_said;
    Virtual_display m_display; // for all programs of a test
};

void Containment::write_odd_documents() const
{
    const auto include = [&](const std::string& name, const std::string& file) {
        m_folder.write("in/" + name, document("<xi:include href='" + attribute(file) + "'/>"));
    };
    m_folder.write("in/empty.mtlx", "");
    m_folder.write("in/nul.mtlx", std::string("<materialx>\0</materialx>", 24));
    m_folder.write("in/no_xml.mtlx", "\x7f"
                                     "ELF\x02\x01\x01");
    m_folder.write("in/cut.mtlx", document_of("cut").substr(0, 200));
    m_folder.write("in/entities.mtlx",
                   "<!DOCTYPE m [<!ENTITY e SYSTEM 'file:///etc/passwd'>]>" + document_of("e"));
    m_folder.write("in/processing.mtlx", "<?xml-stylesheet href='x'?>" + document_of("p"));
    m_folder.write("in/twice.mtlx", document_of("twice") + document_of("twice"));
    m_folder.write("in/zero.mtlx",
                   std::regex_replace(document_of("zero"), std::regex("zero"), "x&#0;/../x"));
    include("itself.mtlx", "itself.mtlx");
    include("includes_device.mtlx", "/dev/zero");
    include("includes_pipe.mtlx", "pipe.mtlx");
    include("includes_folder.mtlx", "..");
    include("includes_passwd.mtlx", "../../../../../../../../etc/passwd");
    include("includes_address.mtlx", "file:///etc/passwd");
    mkfifo(m_folder.file("in/pipe.mtlx").c_str(), 0600);
    fs::create_directory(m_folder.file("in/folder.mtlx"));
    fs::create_symlink("loop.mtlx", m_folder.file("in/loop.mtlx"));
    fs::create_symlink("nothing", m_folder.file("in/nowhere.mtlx"));
    fs::create_symlink("/dev/zero", m_folder.file("in/device.mtlx"));
    fs::create_symlink("..", m_folder.file("in/up"));
    m_folder.write("in/large.mtlx", "");
    fs::resize_file(m_folder.file("in/large.mtlx"), std::uintmax_t{3} << 30);
    std::mt19937 random(3);
    const std::string good = document_of("good");
    for (int i = 0; i < 20; ++i) {
        std::string text = good;
        for (int change = 0; change < 4; ++change)
            text[random() % text.size()] = static_cast<char>(random());
        m_folder.write("in/changed" + std::to_string(i) + ".mtlx", text);
    }
}

} // namespace

TEST_F(Containment, holds_for_hostile_names_in_documents)
{
    constexpr std::size_t effects = 4; // of so many exporters
    const std::vector<std::string> names = hostile_names();
    for (std::size_t i = 0; i < names.size(); ++i)
        m_folder.write("in/" + std::to_string(i) + ".mtlx", document_of(names[i]));
    const auto before = tree_of(m_folder.path(), m_output);
    EXPECT_EQ(0, run({"batch", ".", "--name", "{document}/{exporter}/{material}"}, m_output));
    expect_same(before);
    EXPECT_EQ(effects * names.size(), count_files(m_output, ".cgfx")) << m_said;
    for (std::size_t i = 0; i < names.size(); i += 3) { // a program for each takes its time
        const std::string folder = m_output + "/export/" + std::to_string(i) + "/";
        EXPECT_EQ(0, run({"export", std::to_string(i) + ".mtlx", "-e", "Custom GLSL"}, folder));
        expect_same(before);
        EXPECT_EQ(2U, count_files(folder, ".gl"));
    }
}

TEST_F(Containment, holds_for_hostile_names_of_documents)
{
    std::size_t count = 0;
    for (const std::string& name : hostile_names()) {
        if (name.find('/') != std::string::npos || name.size() > 250)
            continue; // no file can have it
        m_folder.write("in/" + name + ".mtlx", document_of(std::to_string(++count)));
    }
    const auto before = tree_of(m_folder.path(), m_output);
    EXPECT_EQ(
        0, run({"batch", ".", "-e", "5", "--name", "{exporter}/{document}-{material}"}, m_output));
    expect_same(before);
    EXPECT_EQ(count, count_files(m_output, ".cgfx")) << m_said;
}

TEST_F(Containment, holds_for_images_that_are_copied)
{
    const std::string images[] = {"precious", "../precious", "../in/../box/precious",
                                  m_folder.file("box/way/precious.cgfx")};
    for (std::size_t i = 0; i < std::size(images); ++i)
        m_folder.write("in/" + std::to_string(i) + ".mtlx", material("m", "", images[i]));
    const auto before = tree_of(m_folder.path(), m_output);
    EXPECT_EQ(0, run({"batch", ".", "-e", "5", "--texture-paths", "copy", "--name",
                      "{document}/{material}"},
                     m_output));
    expect_same(before);
    for (std::size_t i = 0; i < std::size(images); ++i) {
        const std::string folder = m_output + "/" + std::to_string(i);
        EXPECT_EQ(3, std::distance(fs::directory_iterator(folder), {}))
            << "an effect, an image, the program's notes\n"
            << m_said;
    }
}

TEST_F(Containment, holds_for_odd_documents)
{
    write_odd_documents();
    const auto before = tree_of(m_folder.path(), m_output);
    run({"batch", "-r", ".", "--name", "{document}/{exporter}/{material}"}, m_output);
    expect_same(before);
    for (const auto& entry : fs::directory_iterator(m_folder.file("in"))) {
        run({"export", entry.path().string(), "-e", "5"}, m_output + "/export/");
        expect_same(before);
    }
    EXPECT_LT(0U, count_files(m_output, ".cgfx")) << "some are good enough";
}
