# One set of warnings for both compilers; a warning is an error.
add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
                    -Wnull-dereference -Werror)
