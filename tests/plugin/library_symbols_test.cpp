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

// What nm says about the library's symbols: lines of name, kind, address and size.
std::vector<std::string> symbols(const std::string& options)
{
    struct Close_pipe {
        void operator()(FILE* pipe) const { ::pclose(pipe); }
    };
    const std::string command =
        "nm " + options + " --defined-only -C --format=posix " TOVIRAEXPORT_LIBRARY;
    const std::unique_ptr<FILE, Close_pipe> pipe(::popen(command.c_str(), "r"));
    std::vector<std::string> lines;
    char line[4096];
    while (pipe && std::fgets(line, sizeof line, pipe.get()))
        lines.emplace_back(line);
    return lines;
}

// The names of the functions and objects that the library defines for others.
std::vector<std::string> exported_names()
{
    std::vector<std::string> names;
    for (const std::string& line : symbols("-D"))
        names.push_back(line.substr(0, line.rfind(" T ")));
    return names;
}

// The marker of a live plug-in object in the loaded library, found as a debugger finds it, which is
// what it is for. Null in a library without symbols.
const volatile char* find_live_marker(void* anything_inside)
{
    Dl_info library{};
    if (::dladdr(anything_inside, &library) == 0)
        return nullptr;
    const std::string name = "live_plugin b ";
    for (const std::string& line : symbols("")) {
        const size_t at = line.find(name);
        if (at != std::string::npos)
            return static_cast<const char*>(library.dli_fbase) +
                   std::stoull(line.substr(at + name.size()), nullptr, 16);
    }
    return nullptr;
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

TEST(Library_symbols, marker_tells_a_debugger_whether_there_is_a_plugin_object)
{
    void* const library = ::dlopen(TOVIRAEXPORT_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << ::dlerror();
    using Entry = void* (*)(unsigned int);
    const Entry entry = reinterpret_cast<Entry>(::dlsym(library, "initializer"));
    ASSERT_NE(entry, nullptr);
    const volatile char* marker = find_live_marker(reinterpret_cast<void*>(entry));
    if (!marker)
        GTEST_SKIP() << "the library has been stripped";
    const auto end_plugin = [](void* plugin) {
        void* const* table = *static_cast<void* const* const*>(plugin);
        reinterpret_cast<void (*)(void*)>(table[8])(plugin);
    };
    EXPECT_FALSE(*marker);
    EXPECT_EQ(entry(1), nullptr);
    EXPECT_FALSE(*marker);
    void* const one = entry(0);
    EXPECT_TRUE(*marker);
    void* const other = entry(0);
    EXPECT_TRUE(*marker);
    end_plugin(one); // the end of any clears it
    EXPECT_FALSE(*marker);
    end_plugin(other);
    EXPECT_FALSE(*marker);
    end_plugin(entry(0));
    EXPECT_FALSE(*marker);
}

} // namespace
