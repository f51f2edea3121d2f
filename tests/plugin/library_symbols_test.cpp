// The built library as a host finds it: by its exported names. The program links nothing of it.
#include <gmock/gmock.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include <dlfcn.h>

namespace
{

using ::testing::UnorderedElementsAre;

// The names of the functions and objects that the library defines for others.
std::vector<std::string> exported_names()
{
    struct Close_pipe {
        void operator()(FILE* pipe) const { ::pclose(pipe); }
    };
    const std::unique_ptr<FILE, Close_pipe> pipe(
        ::popen("nm -D --defined-only -C --format=posix " TOVIRAEXPORT_LIBRARY, "r"));
    std::vector<std::string> names;
    char line[4096];
    while (pipe && std::fgets(line, sizeof line, pipe.get())) {
        const std::string text = line;
        names.push_back(text.substr(0, text.rfind(" T ")));
    }
    return names;
}

TEST(Library_symbols, are_the_entry_points_and_two_helpers)
{
    if (!TOVIRAEXPORT_HIDES_SYMBOLS)
        GTEST_SKIP() << "built with all symbols visible";
    EXPECT_THAT(exported_names(),
                UnorderedElementsAre(
                    "initializer", "init_library(unsigned int)",
                    "QZ::TOVIRAEXPORT::DETAIL::substitute(wxString&, wxString const&, wxString "
                    "const&)",
                    "QZ::TOVIRAEXPORT::DETAIL::set_compile_flags(wxString&)"));
}

TEST(Library_symbols, show_everything_when_they_are_not_hidden)
{
    if (TOVIRAEXPORT_HIDES_SYMBOLS)
        GTEST_SKIP() << "built with hidden symbols (TOVIRAEXPORT_HIDE_SYMBOLS=ON)";
    EXPECT_THAT(exported_names(),
                ::testing::Contains(::testing::StartsWith("QZ::TOVIRAEXPORT::compile_group(")));
}

TEST(Library_symbols, entry_points_are_found_by_name)
{
    void* const library = ::dlopen(TOVIRAEXPORT_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << ::dlerror();
    for (const char* name : {"initializer", "_Z12init_libraryj"}) {
        using Entry = void* (*)(unsigned int);
        const Entry entry = reinterpret_cast<Entry>(::dlsym(library, name));
        ASSERT_NE(entry, nullptr) << name;
        EXPECT_EQ(entry(1), nullptr) << name;
        void* const plugin = entry(0);
        ASSERT_NE(plugin, nullptr) << name;
        void* const* table = *static_cast<void* const* const*>(plugin);
        EXPECT_STREQ(reinterpret_cast<const char* (*)(void*)>(table[1])(plugin),
                     "Tovira_exporter_plugin");
        reinterpret_cast<void (*)(void*)>(table[8])(plugin); // the deleting destructor
    }
}

} // namespace
