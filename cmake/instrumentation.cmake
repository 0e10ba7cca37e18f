# QUILLMARK_SANITIZE names the sanitizers to build with, e.g. "address,undefined" or "thread".
set(QUILLMARK_SANITIZE "" CACHE STRING "Sanitizers to build with, comma separated")
if(QUILLMARK_SANITIZE)
    # Less optimised than the release and with lines only: builds in half the time, and a trace still says where.
    add_compile_options(-O1 -g1 -fsanitize=${QUILLMARK_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${QUILLMARK_SANITIZE})
    # clang 14 cannot put the check of function types into a coroutine ("Cannot represent a difference across sections").
    add_compile_options($<$<CXX_COMPILER_ID:Clang>:-fno-sanitize=function>)
    # The thread sanitizer does not see the fences in Asio, and need not: its queues lock. g++ warns of them.
    if(QUILLMARK_SANITIZE MATCHES thread AND CMAKE_CXX_COMPILER_ID STREQUAL GNU)
        add_compile_options(-Wno-tsan)
    endif()
endif()

# script/test --coverage reads what gcov notes.
option(QUILLMARK_COVERAGE "Note which lines and branches run" OFF)
if(QUILLMARK_COVERAGE)
    add_compile_options(--coverage -fprofile-update=atomic)
    add_link_options(--coverage)
endif()
