# Finds wxWidgets through wx-config, 2.8 (GTK 2, ANSI) and 3.2 (GTK 3, Unicode) alike, and makes the
# target wx. The headers count as system headers: those of 2.8 warn under today's compilers.
set(WX_CONFIG "" CACHE FILEPATH "The wx-config program; empty: the one on the PATH")
if(NOT WX_CONFIG)
    find_program(WX_CONFIG_FOUND NAMES wx-config REQUIRED)
    set(wx_config "${WX_CONFIG_FOUND}")
else()
    set(wx_config "${WX_CONFIG}")
endif()

function(ask_wx_config result)
    execute_process(
        COMMAND "${wx_config}" ${ARGN}
        OUTPUT_VARIABLE answer
        OUTPUT_STRIP_TRAILING_WHITESPACE
        COMMAND_ERROR_IS_FATAL ANY)
    separate_arguments(answer UNIX_COMMAND "${answer}")
    set(${result} "${answer}" PARENT_SCOPE)
endfunction()

ask_wx_config(wx_cxxflags --cxxflags)
ask_wx_config(wx_libs --libs core,base)
list(TRANSFORM wx_cxxflags REPLACE "^-I" "-isystem" REGEX "^-I")

add_library(wx INTERFACE)
target_compile_options(wx INTERFACE ${wx_cxxflags})
target_link_libraries(wx INTERFACE ${wx_libs})
# Silent conversions between bytes and wide text lose text; 2.8 does not know these macros.
target_compile_definitions(
    wx INTERFACE wxNO_UNSAFE_WXSTRING_CONV wxNO_IMPLICIT_WXSTRING_ENCODING)
