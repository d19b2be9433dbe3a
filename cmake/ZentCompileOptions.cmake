# Several sources of a target as one: their common headers cost more than all that they hold themselves.
function(zent_batch target size)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ${ZENT_UNITY_BUILD} UNITY_BUILD_BATCH_SIZE ${size})
endfunction()

# A target whose work is small beside its compile time: most of the latter is the optimisation of JSON.
function(zent_optimise_less target)
    target_compile_options(${target} PRIVATE $<$<NOT:$<CONFIG:Debug>>:-O1>)
endfunction()

# What every target of this project is compiled with.
add_library(zent_options INTERFACE)
target_compile_options(zent_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Werror
    -Wfloat-conversion                     # single or double precision is behaviour here, never an accident
    $<$<CXX_COMPILER_ID:GNU>:-Wdouble-promotion> # clang means explicit declarations, too
    -ffp-contract=off                      # the same results on processors with and without fused multiply-add
    # GCC's flow analysis takes a moved small_vector for an access beyond its inline room, or to nothing.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-array-bounds;-Wno-maybe-uninitialized;-Wno-stringop-overread;-Wno-stringop-overflow>
)
if(ZENT_SANITIZE)
    target_compile_options(zent_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                                                  -fno-omit-frame-pointer)
    target_link_options(zent_options INTERFACE -fsanitize=address,undefined)
    target_compile_definitions(zent_options INTERFACE _GLIBCXX_ASSERTIONS)
endif()
if(ZENT_BUILD_FUZZERS)
    target_compile_options(zent_options INTERFACE -fsanitize=fuzzer-no-link) # coverage, which guides them
endif()
target_compile_definitions(zent_options INTERFACE $<$<CONFIG:Debug>:_GLIBCXX_ASSERTIONS>)
