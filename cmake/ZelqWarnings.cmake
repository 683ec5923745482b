# zelq_warnings(target): the project's warning set for its own code. -Wshadow=local is GCC's
# spelling; clang (the fuzz build) has no such option.
function(zelq_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic
    $<$<CXX_COMPILER_ID:GNU>:-Wshadow=local>
    -Wno-unused-parameter $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor>)
endfunction()
