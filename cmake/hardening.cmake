# What makes a fault harder to use against the user; hardening-check sees each of these in the programs. The sanitizers
# find faults themselves and know their own way about memory.
if(QUILLMARK_SANITIZE)
    return()
endif()
include(CheckCXXCompilerFlag)

add_compile_options(-fPIE -fstack-protector-strong)
add_link_options(-pie LINKER:-z,relro LINKER:-z,now)
foreach(option stack-clash-protection cf-protection) # not on every processor
    check_cxx_compiler_flag(-f${option} has_${option})
    if(has_${option})
        add_compile_options(-f${option})
    endif()
endforeach()

# Level 3 looks at sizes known only when the program runs. It needs optimisation; a package's own flags may name another
# level.
if(NOT CMAKE_BUILD_TYPE STREQUAL Debug)
    add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3)
endif()
