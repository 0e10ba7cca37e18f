# One set of warnings for both compilers. The presets make them errors (CMAKE_COMPILE_WARNING_AS_ERROR); for somebody
# who builds a release with a compiler of tomorrow they are none.
add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
                    -Wnull-dereference)
