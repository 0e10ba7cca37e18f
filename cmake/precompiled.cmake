# The headers that most sources include, compiled once instead of once a source: two thirds of the time of a whole build
# without. A source includes what it uses nevertheless: script/lint builds with CMAKE_DISABLE_PRECOMPILE_HEADERS, where
# a missing line is an error.
#
# quillmark_precompiled(NAME HEADERS… [LIBRARIES LIBRARIES…]): a target takes them with
# target_precompile_headers(TARGET REUSE_FROM NAME), or the usual ones with quillmark_take_precompiled(TARGET).
function(quillmark_precompiled name)
    cmake_parse_arguments(ARG "" "" "LIBRARIES" ${ARGN})
    set(source ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
    file(TOUCH ${source}) # a target needs one
    add_library(${name} OBJECT ${source})
    target_precompile_headers(${name} PRIVATE ${ARG_UNPARSED_ARGUMENTS})
    target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES})
endfunction()

# The headers must be compiled with the flags of those that take them: some libraries' flags hold this one, some not.
add_compile_options(-pthread)
# ccache reads from what g++ preprocessed that it took precompiled headers.
add_compile_options($<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)

set(STANDARD_HEADERS <algorithm> <array> <chrono> <cstdint> <deque> <filesystem> <functional> <map> <memory> <optional>
                     <span> <string> <string_view> <utility> <variant> <vector>)
quillmark_precompiled(standard_headers ${STANDARD_HEADERS})
# A quarter to a half of what a source on gtkmm costs without.
quillmark_precompiled(gtk_headers ${STANDARD_HEADERS} <glibmm/main.h> <gtkmm/box.h> <gtkmm/button.h> <gtkmm/label.h>
                      <gtkmm/scrolledwindow.h> <gtkmm/window.h> LIBRARIES PkgConfig::GTKMM)

# Call it after the target has been given its libraries.
function(quillmark_take_precompiled target)
    get_target_property(libraries ${target} LINK_LIBRARIES)
    if(PkgConfig::GTKMM IN_LIST libraries)
        target_precompile_headers(${target} REUSE_FROM gtk_headers)
    else()
        target_precompile_headers(${target} REUSE_FROM standard_headers)
    endif()
endfunction()
