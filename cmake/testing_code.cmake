# Less optimised than the release: the compilation of test code takes longer than its run.
set(TEST_OPTIONS $<$<CONFIG:RelWithDebInfo>:-O1>)

quillmark_precompiled(testing_headers ${STANDARD_HEADERS})
target_compile_options(testing_headers PRIVATE ${TEST_OPTIONS})

# What a target needs to be made of code for tests; call it after the target has been given its libraries.
function(quillmark_testing_code)
    foreach(target ${ARGN})
        target_compile_options(${target} PRIVATE ${TEST_OPTIONS})
        target_precompile_headers(${target} REUSE_FROM testing_headers)
    endforeach()
endfunction()
