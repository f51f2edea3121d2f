# embed_texts(TARGET HEADER FUNCTION FILE...): adds to a target the definition of a function that
# HEADER declares,
#     const std::vector<Shade_text>& FUNCTION();
# which returns the files' texts in their order. FILEs are paths below reference_host/.
#
# Run as a script (with the same words as variables), it writes that definition.
function(embed_texts target header function)
    set(output ${CMAKE_CURRENT_BINARY_DIR}/${function}.cpp)
    set(folder ${PROJECT_SOURCE_DIR}/reference_host)
    list(TRANSFORM ARGN PREPEND ${folder}/ OUTPUT_VARIABLE files)
    string(REPLACE ";" "," names "${ARGN}")
    add_custom_command(
        OUTPUT ${output}
        COMMAND ${CMAKE_COMMAND}
            -DFOLDER=${folder} -DHEADER=${header} -DFUNCTION=${function}
            -DNAMES=${names} -DOUTPUT=${output} -P ${PROJECT_SOURCE_DIR}/cmake/embed_texts.cmake
        DEPENDS ${files} ${PROJECT_SOURCE_DIR}/cmake/embed_texts.cmake
        VERBATIM)
    target_sources(${target} PRIVATE ${output})
endfunction()

if(CMAKE_SCRIPT_MODE_FILE)
    string(REPLACE "," ";" NAMES "${NAMES}")
    foreach(name IN LISTS NAMES)
        file(READ "${FOLDER}/${name}" text)
        string(APPEND rows "        {R\"text(${text})text\", {\"${name}\", 1}},\n")
    endforeach()
    file(WRITE "${OUTPUT}" "#include \"${HEADER}\"

namespace reference_host
{

const std::vector<Shade_text>& ${FUNCTION}()
{
    static const std::vector<Shade_text> texts = {
${rows}    };
    return texts;
}

} // namespace reference_host
")
endif()
