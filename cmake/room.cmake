# quillmark_room(FOLDER [LIBRARIES…]): one OBJECT library of every source in src/FOLDER, named after it with "_" for
# "/". OBJECT, because the operations of one class are defined in several rooms: a second definition of anything is a
# link error instead of a silent choice.
function(quillmark_room folder)
    string(REPLACE "/" "_" name ${folder})
    file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${folder}/*.cpp)
    list(FILTER sources EXCLUDE REGEX "/src/app/main\\.cpp$") # the program's own
    add_library(${name} OBJECT ${sources})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(${name} PUBLIC ${ARGN})
    quillmark_take_precompiled(${name})
endfunction()

# quillmark_rooms(NAME ROOMS…): a target that stands for all of these rooms and other such targets.
function(quillmark_rooms name)
    add_library(${name} INTERFACE)
    foreach(room ${ARGN})
        get_target_property(type ${room} TYPE)
        if(type STREQUAL OBJECT_LIBRARY)
            target_sources(${name} INTERFACE $<TARGET_OBJECTS:${room}>)
        endif()
        target_link_libraries(${name} INTERFACE ${room})
    endforeach()
endfunction()
